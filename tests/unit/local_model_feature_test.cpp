#include <gtest/gtest.h>

#include "local/ModelFeature.h"

namespace {

bool isOn(std::string_view text, Feature feature) { return ModelFeature::parse(text)[static_cast<size_t>(feature)]; }

TEST(ModelFeature, FirstLineWhoseKeyHoldsTheNameDecides) {
  for (const char* text : {"AUDIO=TRUE\n", "AUDIO=TRUE", " AUDIO \t=  TRUE \n", "AUDIO TRUE\nAUDIO=TRUE\n",
                           "X_AUDIO_2=TRUE\n", "AUDIO=TRUE\nAUDIO=FALSE\n"})
    EXPECT_TRUE(isOn(text, Feature::AUDIO)) << text;
  for (const char* text : {"", "AUDIO=true\n", "AUDIO=TRUE2\n", "AUDIO=\n", "AUDIO\n", "AUDI=TRUE\n",
                           "X_AUDIO=FALSE\nAUDIO=TRUE\n", "MODEL=AUDIO\n"})
    EXPECT_FALSE(isOn(text, Feature::AUDIO)) << text;
  EXPECT_FALSE(isOn("AUDIO=TRUE\n", Feature::ONVIF));
  EXPECT_TRUE(isOn("A=B=TRUE\n\n=TRUE\nSERIAL_PASS=TRUE\n", Feature::SERIAL_PASS));
  EXPECT_FALSE(isOn("BACK_FOCUS_MODEL=TRUE\n", Feature::LENS_MODEL));
}

TEST(ModelFeature, OneLineMayDecideSeveralFeatures) {
  const auto flags = ModelFeature::parse("ONVIF_SNMP=TRUE\n");
  EXPECT_TRUE(flags[static_cast<size_t>(Feature::ONVIF)]);
  EXPECT_TRUE(flags[static_cast<size_t>(Feature::SNMP)]);
  EXPECT_FALSE(flags[0]);
}

}  // namespace
