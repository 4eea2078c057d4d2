// The folder configuration's text: what is not understood says why.
#include <cstdint>
#include <cstdlib>

#include "library/folder_config_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(data, data + size);
    hullrider::FolderConfig config;
    std::string error;
    if (hullrider::ReadFolderConfig(text, config, error) != error.empty()) std::abort();
    return 0;
}
