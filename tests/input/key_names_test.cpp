#include "input/key_names.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace hullrider {

TEST(KeyNames, KeysAreCalledWhatStandsOnThem) {
    const std::pair<int32_t, const char*> table[] = {
        {'A', "A"},         {'9', "9"},         {0x70, "F1"},          {0x87, "F24"}, {0x69, "Num 9"},
        {0x6B, "Num +"},    {0x21, "Page Up"},  {0x20, "Space"},       {0xBB, "="},   {0xB3, "Media Play/Pause"},
        {0x5D, "Key 0x5D"}, {300, "Key 0x12C"}, {-1, "Key 0xFFFFFFFF"}};
    for (const auto& [vkKey, name] : table) EXPECT_EQ(KeyName(vkKey), name);
    std::set<std::string> names;
    for (int32_t vkKey = 1; vkKey < 256; ++vkKey) EXPECT_TRUE(names.insert(KeyName(vkKey)).second) << KeyName(vkKey);
}

TEST(KeyNames, ABindingIsNamedWithWhatIsHeld) {
    EXPECT_EQ(KeyText({0x74, true, false, true}), "Ctrl+Shift+F5");
    EXPECT_EQ(KeyText({'J', true, true, true}), "Ctrl+Alt+Shift+J");
    EXPECT_EQ(KeyText({0xB0}), "Media Next");
    EXPECT_EQ(KeyText({0, true, true, true}), "");
}

TEST(KeyNames, ControllersButtonsAreNamedByTheirPlace) {
    const std::pair<int32_t, const char*> table[] = {
        {0, "A"},         {4, "Back"},         {6, "Start"},      {8, "Right stick"}, {9, "Left shoulder"},
        {11, "D-pad up"}, {14, "D-pad right"}, {15, "Button 15"}, {-7, "Button -7"}};
    for (const auto& [button, name] : table) EXPECT_EQ(ControllerButtonName(button), name);
    EXPECT_EQ(ControllerTriggerName(1), "Right trigger");
    EXPECT_EQ(ControllerTriggerName(2), "Trigger 2");
}

}  // namespace hullrider
