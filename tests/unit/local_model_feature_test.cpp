#include <gtest/gtest.h>

#include "local/ModelFeature.h"

namespace {

bool isOn(std::string_view text, Feature feature) { return ModelFeature::parse(text)[static_cast<size_t>(feature)]; }

struct Case {
  const char* text;
  Feature feature;
  bool isOn;
};

TEST(ModelFeature, FirstLineWhoseKeyHoldsTheNameDecides) {
  const Case cases[] = {
      {"", Feature::AUDIO, false},
      {"AUDIO=TRUE\n", Feature::AUDIO, true},
      {"AUDIO=TRUE", Feature::AUDIO, true},  // no line end at the end of the file
      {"AUDIO=TRUE\n", Feature::ONVIF, false},
      {" AUDIO \t=  TRUE \n", Feature::AUDIO, true},
      {"AUDIO=true\n", Feature::AUDIO, false},
      {"AUDIO=TRUE2\n", Feature::AUDIO, false},
      {"AUDIO=\n", Feature::AUDIO, false},
      {"AUDIO\n", Feature::AUDIO, false},
      {"AUDIO TRUE\nAUDIO=TRUE\n", Feature::AUDIO, true},  // the first line has no value at all
      {"X_AUDIO_2=TRUE\n", Feature::AUDIO, true},
      {"AUDI=TRUE\n", Feature::AUDIO, false},
      {"X_AUDIO=FALSE\nAUDIO=TRUE\n", Feature::AUDIO, false},
      {"AUDIO=TRUE\nAUDIO=FALSE\n", Feature::AUDIO, true},
      {"MODEL=AUDIO\n", Feature::AUDIO, false},  // a name in the value means nothing
      {"A=B=TRUE\n\n=TRUE\nSERIAL_PASS=TRUE\n", Feature::SERIAL_PASS, true},
      {"BACK_FOCUS_MODEL=TRUE\n", Feature::LENS_MODEL, false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(isOn(c.text, c.feature), c.isOn) << c.text;
}

TEST(ModelFeature, OneLineMayDecideSeveralFeatures) {
  const auto flags = ModelFeature::parse("ONVIF_SNMP=TRUE\n");
  EXPECT_TRUE(flags[static_cast<size_t>(Feature::ONVIF)]);
  EXPECT_TRUE(flags[static_cast<size_t>(Feature::SNMP)]);
  EXPECT_FALSE(flags[0]);
}

}  // namespace
