#include "playback/running_marker.h"

#include "platform/console.h"
#include "platform/files.h"

namespace hullrider {

void WriteRunningMarker(const std::string& commandFolder, std::string_view text) {
    const std::string path = (commandFolder.empty() ? "." : commandFolder) + "/MusicRunning.txt";
    PrintLine("Trying to write to: " + path);
    PrintLine(WriteWholeFile(path, text) ? "File written successfully." : "Failed to open " + path + " for writing.");
}

}  // namespace hullrider
