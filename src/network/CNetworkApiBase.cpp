#include "network/CNetworkApiBase.h"

#include "local/CommonInterface.h"

bool CNetworkApiBase::hasOpenssl() { return CommonInterface::isFileExist("/bin/openssl"); }

bool CNetworkApiBase::hasSnmpd() { return CommonInterface::isFileExist("/bin/snmpd"); }
