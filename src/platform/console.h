// Lines for the person at the console. With no console attached they are discarded. Callable from any thread; a line is
// never mixed with another.
#pragma once

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

}  // namespace hullrider
