#include "app/front.h"

#include <exception>

#include "app/simulate.h"
#include "platform/console.h"
#include "platform/memory.h"

namespace hullrider {

int RunFront(const std::vector<std::string>& arguments, const std::function<int(const RunOptions&)>& run,
             const std::function<void(const std::string&)>& tell) {
    ShareOneHeap();
    RunOptions options;
    std::string error;
    if (!ParseOptions(arguments, options, error)) {
        PrintErrorLine(error);
        return 2;
    }
    if (options.showHelp || options.showVersion) {
        PrintLine(options.showHelp ? HelpText() : VersionText());
        return 0;
    }
    try {
        if (options.simulate) {
            PrintLine(SimulationText(options));
            return 0;
        }
        return run(options);
    } catch (const std::exception& failure) {
        tell(failure.what());
        return 1;
    }
}

}  // namespace hullrider
