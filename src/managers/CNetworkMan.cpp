#include "managers/CNetworkMan.h"

#include "network/Destination.h"
#include "network/Interface.h"
#include "network/Ntp.h"
#include "network/Routing.h"
#include "network/Services.h"
#include "network/WebServer.h"
#include "service/OnvifSettings.h"

void CNetworkMan::build() {
  add<Network::CHostname>("hostname", "RWR-R-");

  add<Network::CDestination>("destination");
  add<Network::CDestination::CHost>("destination.host", "RWR-R-");
  add<Network::CDestination::CPort>("destination.port", "RWR-R-");
  add<Network::CDestination::CFramerate>("destination.framerate", "RWR-R-");
  add<Network::CDestination::CProtocol>("destination.protocol", "RWR-R-");
  add<Network::CDestination::CEncodeCh>("destination.encode_ch", "RWR-R-");
  add<Network::CDestination::CInterface>("destination.interface", "RWR-R-");
  add<Network::CDestination::CUserdata>("destination.userdata", "RWR-R-");
  add<Network::CDestination::CStatus>("destination.status", "RWRWR-");

  add<Network::CNtp>("ntp");
  add<Network::CNtp::CInterval>("ntp.interval", "RWRWR-");
  add<Network::CNtp::CUnit>("ntp.unit", "RWRWR-");
  add<Network::CNtp::CStatus>("ntp.status", "RWRWR-");
  add<Network::CNtp::CHost>("ntp.host", "RWRWR-");

  add<Network::CDns>("dns");
  add<Network::CDns::CIp>("dns.ip", "RWRWR-");
  add<Network::CDns::CStatus>("dns.status", "RWRWR-");
  add<Network::CDns::CType>("dns.type", "RWRWR-");

  add<Network::CHttp>("http");
  add<Network::CHttp::CStatus>("http.status", "RWR-R-");
  add<Network::CHttp::CPriority>("http.priority", "RWR-R-");
  add<Network::CHttp::CPort>("http.port", "RWRWR-");
  add<Network::CHttp::CType>("http.type", "RWRWR-");

  add<Network::CSnmpAgent>("snmp_agent");
  add<Network::CSnmpAgent::CStatus>("snmp_agent.status", "RWRWR-");

  add<Network::COnvif>("onvif");
  add<Network::COnvif::CStatus>("onvif.status", "RWR-R-");
  add<Network::COnvif::CComment>("onvif.comment", "RWR-R-");
  add<Network::COnvif::CQuality>("onvif.quality");
  add<Network::COnvif::CQuality::CPriority>("onvif.quality.priority", "RWR-R-");
  add<Network::COnvif::CMetadata>("onvif.metadata", "RWR-R-");

  add<Network::CAmxBeacon>("amx_beacon");
  add<Network::CAmxBeacon::CStatus>("amx_beacon.status", "RWR-R-");

  add<Network::CGateway>("gateway", "RWR-R-");
  add<Network::CGateway::CIp>("gateway.ip", "RWR-R-");
  add<Network::CGateway::CStatus>("gateway.status", "-W----");

  add<Network::CDomainname>("domainname", "RWR-R-");

  add<Network::CAccessControl>("access_control");
  add<Network::CAccessControl::CLogic>("access_control.logic", "RWR-R-");
  add<Network::CAccessControl::CHost>("access_control.host", "RWR-R-");

  add<Network::CPsia>("psia");
  add<Network::CPsia::CStatus>("psia.status", "RWR-R-");

  add<Network::CRtsp>("rtsp");
  add<Network::CRtsp::CStatus>("rtsp.status", "RWRWR-");
  add<Network::CRtsp::CPort>("rtsp.port", "RWRWR-");

  add<Network::CHttps>("https");
  add<Network::CHttps::CStatus>("https.status", "RWR-R-");
  add<Network::CHttps::CPort>("https.port", "RWRWR-");

  add<Network::CInterfaceCount>("interface_count", "R-R-R-");

  add<Network::CInterface>("interface");
  add<Network::CInterface::CIp>("interface.ip", "RWR-R-");
  add<Network::CInterface::CSubnetmask>("interface.subnetmask", "RWR-R-");
  add<Network::CInterface::CDhcp>("interface.dhcp");
  add<Network::CInterface::CDhcp::CStatus>("interface.dhcp.status", "RWR-R-");
  add<Network::CInterface::CDhcp::CNtp>("interface.dhcp.ntp", "RWR-R-");
  add<Network::CInterface::CDhcp::CDns>("interface.dhcp.dns", "RWR-R-");
  add<Network::CInterface::CDhcp::CHostname>("interface.dhcp.hostname", "RWR-R-");
  add<Network::CInterface::CStatus>("interface.status", "RWR-R-");
  add<Network::CInterface::CDscp>("interface.dscp", "RWR-R-");
  add<Network::CInterface::CMtu>("interface.mtu", "RWR-R-");
  add<Network::CInterface::CTtl>("interface.ttl");
  add<Network::CInterface::CTtl::CMulticast>("interface.ttl.multicast", "RWR-R-");
  add<Network::CInterface::CTtl::CUnicast>("interface.ttl.unicast", "RWR-R-");
  add<Network::CInterface::CNegotiation>("interface.negotiation", "RWR-R-");
  add<Network::CInterface::CMac>("interface.mac", "R-R-R-");
  add<Network::CInterface::CNegotiationDetail>("interface.negotiation_detail", "R-R-R-");
  add<Network::CInterface::CIpv6>("interface.ipv6");
  add<Network::CInterface::CIpv6::CStatus>("interface.ipv6.status", "RWR-R-");
  add<Network::CInterface::CIpv6::CLinkLocal>("interface.ipv6.link_local", "R-R-R-");
  add<Network::CInterface::CIpv6::CGlobal>("interface.ipv6.global", "R-R-R-");
}

void CNetworkMan::replay() {
  m_replayStored("network.hostname");
  m_replay("network.dns.status=restart");
  m_replayStored("network.http(streaming).priority");
  m_replayStored("network.snmp_agent.status");
  m_replayStored("network.onvif.status");
  m_replayStored("network.amx_beacon.status");
  m_replay("network.rtsp.status=restart");
  m_replay("network.gateway(ipv4).status=save");
}

void CNetworkMan::startNvtAplThread() {
  OnvifSettings::publish();
  m_onvifThread.start();
}
