#include "model/parameter_text.h"

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<double>;

TEST(ParameterTexts, TakeWhatIsMissingFromTheDefaults) {
  const auto read = [](std::string_view text) { return model::parameters(text, "10,0,100,0"); };
  EXPECT_EQ(read("20,-5,5,1"), (Numbers{20, -5, 5, 1}));
  EXPECT_EQ(read("20"), (Numbers{20, 0, 100, 0}));
  EXPECT_EQ(read(""), (Numbers{10, 0, 100, 0}));
  EXPECT_EQ(read("1,2,3,4,5"), (Numbers{1, 2, 3, 4}));
}

TEST(ParameterTexts, SizesCanBeJoinedByAWord) {
  for (const char* text : {"10,5,0.5,1", "10 x 5,0.5,1", "10 by 5,0.5,1"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(model::sizedParameters(text, "10,1,0,0"), (Numbers{10, 5, 0.5, 1}));
  }
  EXPECT_EQ(model::sizedParameters("8", "10,1,0,0"), (Numbers{8, 1, 0, 0}));
  EXPECT_EQ(model::parameterText({10, 5, 0.5, -1}), "10,5,0.5,-1");
}

}  // namespace
