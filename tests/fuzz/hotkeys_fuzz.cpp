// The hotkey file's text: whatever was read, in part or whole, can be written and read again and is the same.
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>

#include "input/hotkey_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace hullrider;
    const std::string text(data, data + size);
    HotkeyBindings bindings;
    try {
        ReadHotkeyConfig(text, bindings);
    } catch (const std::exception& error) {
        if (*error.what() == '\0') std::abort();
    }
    if (HotkeysToRegister(bindings).size() > 21) std::abort();
    const std::string written = HotkeyConfigText(bindings);
    HotkeyBindings read;
    ReadHotkeyConfig(written, read);
    if (HotkeyConfigText(read) != written) std::abort();
    return 0;
}
