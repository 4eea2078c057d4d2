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

// A program without a console of its own writes to that of the program that started it, if there is one, until the
// console is let go. Output that was redirected stays redirected. No effect on systems where every program has streams.
void AttachParentConsole();
void ReleaseConsole();

// Calls `handler` on a thread of its own when the user or the system asks the program to end (Ctrl+C, a closed console,
// a termination signal), instead of ending at once. Once, at start-up.
void OnInterrupt(void (*handler)());

// Lines typed at the console, for a front without windows. Not on Windows, whose front has a window.
class ConsoleInput {
public:
    // The next line without its end, as soon as there is one. Nothing once `timeout` has passed, or earlier when only
    // part of a line has arrived or the wait was ended. The end of the input is not an event: from then on nothing
    // arrives.
    std::optional<std::string> WaitForLine(std::chrono::milliseconds timeout);

    // Ends the wait under way, or else the next one. Any thread, even while the program ends.
    static void EndWait();

private:
    void Read();

    static constexpr size_t kLongestLine = 65536;  // what is longer is no command and is dropped
    std::string pending_;
    bool ended_ = false;
};

}  // namespace hullrider
