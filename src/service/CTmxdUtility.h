#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "service/GpioMessage.h"

/**
 * The nodes' toolbox: exact reads and writes, conversions and escapes of values, messages to the GPIO daemon and the
 * PTZ sequencer, child programs, and the restart of the camera's network daemons. Stateless. Unless said otherwise the
 * results are 0, and -1 on a failure, which is logged.
 */
class CTmxdUtility {
 public:
  // Descriptors (Descriptor.cpp): the bytes moved, or -1. No time-out; a valid descriptor, a buffer and a count above
  // 0 are asserted. A read that ends early because the file does gives the bytes so far.
  [[nodiscard]] static ssize_t readData(int32_t fd, void* buf, size_t reqLen);
  [[nodiscard]] static ssize_t writeData(int32_t fd, const void* buf, size_t reqLen);

  // Escapes (Escapes.cpp).
  /** Everything but ASCII letters and digits as "%" and the hexadecimal number, lower-case and not padded. */
  [[nodiscard]] static std::string encodeUrlAll(const std::string& text);
  /** A double quote, "%", "&" and NUL as "%22", "%25", "%26" and "%00", so that a value fits into a response. */
  [[nodiscard]] static std::string encodeValue(const std::string& text);
  /** The text that "%xx" escapes stand for; see the source for malformed ones. */
  [[nodiscard]] static std::string decodeEscapes(const std::string& text, bool plusIsBlank);
  /** The same up to its first NUL. */
  [[nodiscard]] static std::string decodeValue(const std::string& text, bool plusIsBlank = false);
  /** 0 when the text holds none of the characters. */
  [[nodiscard]] static int32_t findCharInStr(const std::string& text, const std::string& characters);

  // Messages (Messages.cpp).
  /** 0 only when the daemon acknowledged this command; a reply is handed out even if it did not. */
  [[nodiscard]] static int32_t sendGPIO(const GpioMessage& request, GpioMessage* reply);
  /** The same for a command that the daemon does not answer. */
  [[nodiscard]] static int32_t sendGPIO(const GpioMessage& request);
  /** Request and reply are plain texts; the sequencer has 5 seconds for each direction. */
  [[nodiscard]] static int32_t sendPtzseq(const std::string& request, std::string* reply);

  // Child programs (Processes.cpp).
  /** Runs a program to its end: its exit status, or -1 when it did not run or not end by itself. */
  [[nodiscard]] static int32_t execProcess(const std::vector<std::string>& argv);

  // The camera and its network daemons (ServiceControl.cpp, AddressClient.cpp).
  /** Asks the upreset daemon to restart the camera, once nobody writes to flash. */
  static void reboot();
  /** Writes the web server's configuration from the stored values and starts it anew. */
  static int32_t rebootLighttpd();
  /** Gives the interface its address anew, from the network or from the stored values. */
  static int32_t rebootDhcpcd();
  /** Analog output: "on", "off" or "colorbar"; the camera library's result, or -1 for another word. */
  [[nodiscard]] static int32_t setSdkAnalogoutMode(const std::string& word);

  // Files of the network daemons (KeyValue.cpp).
  /** The text behind the key, without blanks around it, in the first line that holds the key with no "#" before it. */
  [[nodiscard]] static std::string readKeyValue(const std::string& path, const std::string& key);
  [[nodiscard]] static std::string keyValue(const std::vector<std::string>& lines, const std::string& key);
};
