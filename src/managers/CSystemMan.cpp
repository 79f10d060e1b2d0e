#include "managers/CSystemMan.h"

#include "system/Accounts.h"
#include "system/Clock.h"
#include "system/Identity.h"
#include "system/Logs.h"
#include "system/Password.h"
#include "system/Session.h"
#include "system/Status.h"

void CSystemMan::build() {
  add<System::CHardware>("hardware");
  add<System::CHardware::CCpu>("hardware.cpu");
  add<System::CHardware::CCpu::CUtilization>("hardware.cpu.utilization", "R-----");
  add<System::CHardware::CCpu::CClock>("hardware.cpu.clock", "R-----");
  add<System::CHardware::CDdr>("hardware.ddr");
  add<System::CHardware::CDdr::CClock>("hardware.ddr.clock", "R-----");

  add<System::CDate>("date", "RWR-R-");
  add<System::CTimezone>("timezone", "RWR-R-");
  add<System::CModel>("model", "R-R-R-");
  add<System::CGuid>("guid", "R-R-R-");

  add<System::CSoftware>("software");
  add<System::CSoftware::CRevision>("software.revision", "R-R-R-");
  add<System::CSoftware::CProgramid>("software.programid", "R-R-R-");

  add<System::CLog>("log", "R-----");
  add<System::COzmMac>("_00c0de_ozm_mac", "RW----");
  add<System::CStatus>("status", "-W----");

  add<System::CPassword>("password");
  add<System::CPassword::CAdmin>("password.admin", "-W----");
  add<System::CPassword::CAdmin::CStatus>("password.admin.status", "RW----");
  add<System::CPassword::COperator>("password.operator", "-W----");
  add<System::CPassword::COperator::CStatus>("password.operator.status", "RW----");
  add<System::CPassword::CUser>("password.user", "-W----");
  add<System::CPassword::CUser::CStatus>("password.user.status", "RW----");

  add<System::CSession>("session", "R-R-R-");
  add<System::CSession::CTotalBitrate>("session.total_bitrate", "R-R-R-");
  add<System::CSession::CSendingCount>("session.sending_count", "R-R-R-");
  add<System::CSession::CSendingMax>("session.sending_max", "R-R-R-");
  add<System::CSession::CSending>("session.sending");
  add<System::CSession::CSending::CBitrate>("session.sending.bitrate", "R-R-R-");
  add<System::CSession::CSending::CTo>("session.sending.to");
  add<System::CSession::CSending::CTo::CIp>("session.sending.to.ip", "R-R-R-");
  add<System::CSession::CSending::CTo::CPort>("session.sending.to.port", "R-R-R-");
  add<System::CSession::CSending::CTo::CProtocol>("session.sending.to.protocol", "R-R-R-");
  add<System::CSession::CSending::CTo::CSession>("session.sending.to.session", "R-R-R-");
  add<System::CSession::CSending::CFrom>("session.sending.from");
  add<System::CSession::CSending::CFrom::CEncode>("session.sending.from.encode", "R-R-R-");
  add<System::CSession::CSending::CFrom::CFramesize>("session.sending.from.framesize", "R-R-R-");
  add<System::CSession::CSending::CFrom::CFramerate>("session.sending.from.framerate", "R-R-R-");
  add<System::CSession::CReceivingCount>("session.receiving_count", "R-R-R-");
  add<System::CSession::CReceivingMax>("session.receiving_max", "R-R-R-");
  add<System::CSession::CReceiving>("session.receiving");
  add<System::CSession::CReceiving::CBitrate>("session.receiving.bitrate", "R-R-R-");
  add<System::CSession::CReceiving::CFrom>("session.receiving.from");
  add<System::CSession::CReceiving::CFrom::CIp>("session.receiving.from.ip", "R-R-R-");
  add<System::CSession::CReceiving::CFrom::CPort>("session.receiving.from.port", "R-R-R-");
  add<System::CSession::CReceiving::CFrom::CProtocol>("session.receiving.from.protocol", "R-R-R-");
  add<System::CSession::CReceiving::CFrom::CSession>("session.receiving.from.session", "R-R-R-");
  add<System::CSession::CReceiving::CTo>("session.receiving.to");
  add<System::CSession::CReceiving::CTo::CDecode>("session.receiving.to.decode", "R-R-R-");

  add<System::CLoglevel>("loglevel", "RW----");
}

void CSystemMan::replay() { Accounts::recover(); }
