// Lines for the person at the console. With no console attached they are discarded. Callable from any thread; a line is
// never mixed with another.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

// Writes the text and a line end to the standard output, or to the error stream.
void PrintLine(std::string_view text);
void PrintErrorLine(std::string_view text);

// A program without a console of its own writes to that of its parent process, if it has one, until ReleaseConsole.
// Redirected output stays redirected. No effect on systems where every program has streams.
void AttachParentConsole();
void ReleaseConsole();

// Calls `handler` on a thread of its own, instead of ending at once, when the user or the system asks the program to
// end (Ctrl+C, a closed console, a termination signal). Call once, at start-up.
void OnInterrupt(void (*handler)());

// Lines typed at the console, for the front without a window. Not on Windows, whose front has one.
class ConsoleInput {
public:
    // The next line without its end, as soon as there is one. Nothing when `timeout` has passed, when only part of a
    // line has arrived or when the wait was ended. At the end of the input it keeps waiting: nothing arrives any more.
    std::optional<std::string> WaitForLine(std::chrono::milliseconds timeout);

    // Ends the current wait, or else the next one. Any thread, even while the program ends.
    static void EndWait();

private:
    void Read();

    static constexpr size_t kLongestLine = 65536;  // no command is longer: such a line is dropped
    std::string pending_;
    bool ended_ = false;
};

}  // namespace hullrider
