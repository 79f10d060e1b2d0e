#include "managers/Roots.h"

#include "managers/CApplicationMan.h"
#include "managers/CAudioMan.h"
#include "managers/CCameraMan.h"
#include "managers/CEncodeMan.h"
#include "managers/COnvifMan.h"
#include "managers/CPeripheralMan.h"
#include "managers/CStorageMan.h"
#include "managers/CSystemMan.h"
#include "managers/CUserinterfaceMan.h"
#include "managers/CVideoMan.h"

Roots::Roots(void (*begin)(CManBase& manager)) {
  const auto create = [&]<class Manager>(std::unique_ptr<Manager> manager) {
    Manager* created = manager.get();
    m_managers.push_back(std::move(manager));
    begin(*created);
    return created;
  };
  auto* system = create(std::make_unique<CSystemMan>());
  m_network = create(std::make_unique<CNetworkMan>());
  auto* encode = create(std::make_unique<CEncodeMan>());
  auto* camera = create(std::make_unique<CCameraMan>());
  auto* peripheral = create(std::make_unique<CPeripheralMan>());
  auto* application = create(std::make_unique<CApplicationMan>());
  auto* audio = create(std::make_unique<CAudioMan>());
  auto* storage = create(std::make_unique<CStorageMan>());
  auto* video = create(std::make_unique<CVideoMan>());
  auto* userinterface = create(std::make_unique<CUserinterfaceMan>());
  auto* onvif = create(std::make_unique<COnvifMan>());
  m_names = {
      {system, "system"},
      {m_network, "network"},
      {camera, "camera"},
      {encode, "encode"},
      {peripheral, "peripheral"},
      {peripheral, "periph"},
      {application, "application"},
      {application, "app"},
      {audio, "audio"},
      {video, "video"},
      {storage, "storage"},
      {userinterface, "userinterface"},
      {userinterface, "ui"},
      {onvif, "onvif"},
  };
}

Roots::~Roots() = default;
