#include "tests/camera/Saves.h"

namespace test {

const std::vector<Save>& everySave() {
  static const std::string scene = "&camera.scene.status=save";
  static const std::vector<Save> saves{
      {"WriteThrough", "ui.encode(1).cbr_mode(jpeg)=vfs", "ui.encode(1).cbr_mode(jpeg)=afs"},
      {"Scene", "camera.scene.image.color=7" + scene, "camera.scene.image.color=0" + scene},
      {"Camera", "camera.scene.image.color=7&camera.status=save", "camera.scene.image.color=0&camera.status=save"},
      {"SceneGoto", "camera.scene(0).status=goto"},
      {"SceneFromFactory", "camera.scene(0).status=initialize", "",
       "sed -i s/^COLOR=.*/COLOR=3/ /mnt/flash/sysconfig/scene/0.conf", kHalfNoticed},
      {"Encode", "encode(1).framerate=10&encode(1).status=save", "encode(1).framerate=5&encode(1).status=save"},
      {"Interface", "network.interface(1).mtu=1400&network.interface(1).status=restart", "", "",
       kRestarts | kHalfNoticed},
      {"Commit", "network.dns.ip=10.0.0.1&network.dns.status=restart",
       "network.dns.ip=0.0.0.0&network.dns.status=restart"},
      {"Destination", "network.destination(1).port=6000&network.destination(1).status=save",
       "network.destination(1).port=49152&network.destination(1).status=save"},
      {"Stream", "network.destination(1).status=start", "network.destination(1).status=stop"},
      {"TimeClient", "network.ntp.host=10.0.0.9&network.ntp.status=restart",
       "network.ntp.host=0.0.0.0&network.ntp.status=restart"},
      {"Onvif", "network.onvif.status=on", "network.onvif.status=off"},
      {"WebServer", "network.http.port=8080&network.http.status=restart",
       "network.http.port=80&network.http.status=restart", "", kHalfNoticed},
      {"Event", "application.event(3).trigger=pin1&application.event(3).status=restart",
       "application.event(3).trigger=pin2&application.event(3).status=restart"},
      {"Transfer", "application.ftp.host=10.1.2.3", "application.ftp.host=%00", "", kHalfNoticed},
      {"Object", "application.object(1).prerec=7", "application.object(1).prerec=5"},
      {"ClipName", "application.audioplay(1).name=gong", "application.audioplay(1).name=%00",
       "echo > /mnt/flash/usr/audio/alarm_1.wav"},
      {"ClipRemoval", "application.audioplay(2).status=delete", "", "echo > /mnt/flash/usr/audio/alarm_2.wav"},
      {"Audio", "audio.output.volume=7", "audio.output.volume=5"},
      {"AudioDetection", "audio.input.detection(1).level=70", "audio.input.detection(1).level=50"},
      {"OutputPin", "peripheral.output_pin(1).status=off", "peripheral.output_pin(1).status=on"},
      {"Serial", "peripheral.serial(1).comment=x", "peripheral.serial(1).comment=y"},
      {"Card", "storage.disk(1).erecmode=on", "storage.disk(1).erecmode=off"},
      {"Zone", "system.timezone=Berlin", "system.timezone=Japan", "", kHalfNoticed},
      {"SummerTime", "onvif.system.daylightsaving=off", "onvif.system.daylightsaving=on", "", kHalfNoticed},
      {"Position", "camera.position(8).comment=gate", "camera.position(8).comment=yard"},
      {"Patrol", "camera.motion.auto_patrol(0).position(1)=5&camera.motion.auto_patrol(0).status=save",
       "camera.motion.auto_patrol(0).position(1)=0&camera.motion.auto_patrol(0).status=save"},
      {"Focus", "camera.focus.gpiofrom.check_status=day", "camera.focus.gpiofrom.status=stop",
       "echo 2026.01.02 03:04:05 > /mnt/sysinfo/obsave.dat", kHalfNoticed},
      {"Service", "camera.adjust_service.alc.speed=7&camera.adjust_service.status=save",
       "camera.adjust_service.alc.speed=20&camera.adjust_service.status=save"},
      {"Calibration", "camera.dspadjust.irygain1=7&camera.dspadjust.status=save",
       "camera.dspadjust.irygain1=240&camera.dspadjust.status=save"},
      {"Detection", "camera.detection.level=3&camera.detection.status=save",
       "camera.detection.level=0&camera.detection.status=save"},
      {"Video", "video.output.status=on", "video.output.status=off", "", kHalfNoticed},
      {"Password", "system.password.admin(1)=new",
       "system.password.admin(1)=old&system.password.admin(1).status=initialize"},
      {"PasswordRemoval", "system.password.admin(2).status=initialize", "",
       "htpasswd -bm /etc/lighttpd/.htpasswd admin x; htpasswd -bm /etc/lighttpd/.htpasswd admin2 x"},
      {"Identity", "system.guid", "", "rm -f /mnt/sysinfo/uuid", kHalfNoticed},
      {"Restore", "system.status=initialize", "", "sed -i s/COMMENT=.*/COMMENT=mine/ /mnt/flash/sysconfig/serial.conf",
       kRestarts | kHalfNoticed},
  };
  return saves;
}

const std::vector<Start>& everyStart() {
  static constexpr const char* serial = "flash/sysconfig/serial.conf";
  static const std::vector<Start> starts{
      {"Usual", [](const Camera&) {}},
      {"HealsAShortFile", [](const Camera& camera) { camera.write(serial, "SERIAL_COMMENT=mine\n"); }},
      {"HealsTheCalibration", [](const Camera& camera) { camera.write("sysinfo/kq40_camdsp.conf", "EVREF=7\n"); }},
      {"BringsAFileBack", [](const Camera& camera) { std::filesystem::remove(camera.path(serial)); }},
      {"MakesAFileAnew", [](const Camera& camera) { std::filesystem::remove(camera.path("sysinfo/system.conf")); }},
      {"RestoresThePartition", [](const Camera& camera) { camera.write(serial, "SERIAL_COMMENT=mine\nnothing\n"); }},
      {"MountsAnErasedPartition", [](const Camera& camera) { camera.write("mtd5", std::string(1024, '\xff')); }},
      {"StepsTheVersion",
       [](const Camera& camera) {
         std::filesystem::remove(camera.path("flash/sysconfig/config_version"));
         for (const char* file : {"scene/0", "scene/7", "camera"})
           camera.setRow("flash/sysconfig/" + std::string(file) + ".conf", "AUTO_EXPOSURE_REFERENCE", "3");
       }},
      {"TakesADeletionBack",
       [](const Camera& camera) {
         camera.write("flash/lighttpd/.htpasswd.bak", "admin:x\n");
         camera.write("flash/lighttpd/.htpasswd", "adm");
       }},
      {"KeepsADate",
       [](const Camera& camera) {
         camera.write("flash/usr/obtmp.dat", "2026.01.02 03:04:05\n");
         camera.setRow("sysinfo/kq40_autofocus.conf", "AF_ICR_FLG", "1");
       }},
  };
  return starts;
}

}  // namespace test
