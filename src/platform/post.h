// The one door from other threads to the UI thread.
#pragma once

#include <functional>

namespace hullrider {

// Has the UI thread run `work`, after everything posted before. Work posted by a worker is dropped when the worker is
// canceled first. Any thread.
void Post(std::function<void()> work);

// Runs what was posted until now. Does nothing while an error box is open, because the box may interrupt work that must
// not be disturbed. An exception becomes one line on the error stream. UI thread, also within posted work.
void RunPosted();

// Drops what was posted. UI thread.
void DropPosted();

// How the UI thread learns that something was posted; it must then call RunPosted. The waker runs on the posting
// thread, possibly until the program ends, so it must not touch anything that may be gone by then. Empty: no waker.
void SetPostWaker(std::function<void()> waker);

}  // namespace hullrider
