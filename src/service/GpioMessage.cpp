#include "service/GpioMessage.h"

#include "local/LittleEndian.h"

GpioMessage::Bytes GpioMessage::toBytes() const {
  Bytes bytes{};
  for (size_t i = 0; i < words.size(); ++i)
    putWord(bytes, 4 * i, words[i]);
  return bytes;
}

GpioMessage GpioMessage::fromBytes(const Bytes& bytes) {
  GpioMessage message;
  for (size_t i = 0; i < message.words.size(); ++i)
    message.words[i] = getWord(bytes, 4 * i);
  return message;
}
