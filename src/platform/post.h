// The one door from other threads to the UI thread.
#pragma once

#include <functional>

namespace hullrider {

// Has the UI thread run `work`, after everything that was posted before. What a worker has posted is dropped when the
// worker is canceled before the UI thread has come to it. Any thread.
void Post(std::function<void()> work);

// Runs what was posted until now. Does nothing while an error box is open: one may have been opened in the midst of
// work that must not be disturbed. An exception is one line on the error stream. UI thread, also within posted work.
void RunPosted();

// Drops what was posted. UI thread.
void DropPosted();

// How the UI thread is told that something was posted; it must call RunPosted then. Called on the thread that posts,
// possibly until the program ends, so it must not touch what may be gone by then. Empty: not at all.
void SetPostWaker(std::function<void()> waker);

}  // namespace hullrider
