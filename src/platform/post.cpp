#include "platform/post.h"

#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/stop_scope.h"

namespace hullrider {

namespace {

struct Posted {
    std::function<void()> work;
    std::stop_token stop;  // of the worker that posted it
};

struct Door {
    std::mutex mutex;
    std::deque<Posted> queue;
    std::shared_ptr<const std::function<void()>> waker;
    bool isWoken = false;  // since the last RunPosted; one wake-up is enough, and a message queue has a limit
};

Door& TheDoor() {
    static Door& door = *new Door;  // never destroyed: workers may post while the program ends
    return door;
}

std::optional<Posted> TakeFirst() {
    Door& door = TheDoor();
    const std::lock_guard lock(door.mutex);
    if (door.queue.empty()) return std::nullopt;
    Posted first = std::move(door.queue.front());
    door.queue.pop_front();
    return first;
}

void RunOne(const Posted& posted) {
    if (posted.stop.stop_requested()) return;
    try {
        posted.work();
    } catch (const std::exception& failure) {
        PrintErrorLine(failure.what());
    }
}

}  // namespace

void Post(std::function<void()> work) {
    Door& door = TheDoor();
    std::shared_ptr<const std::function<void()>> waker;
    {
        const std::lock_guard lock(door.mutex);
        door.queue.push_back({std::move(work), CurrentStopToken()});
        if (!std::exchange(door.isWoken, true)) waker = door.waker;
    }
    if (waker && *waker) (*waker)();
}

void RunPosted() {
    if (IsErrorBoxOpen()) return;
    size_t count = 0;
    {
        Door& door = TheDoor();
        const std::lock_guard lock(door.mutex);
        door.isWoken = false;
        count = door.queue.size();
    }
    const StopScope forNobody(nullptr);
    for (; count > 0; --count) {
        const std::optional<Posted> posted = TakeFirst();
        if (!posted) return;
        RunOne(*posted);
    }
}

void DropPosted() {
    std::deque<Posted> dropped;  // destroyed unlocked: its destructors may post again
    const std::lock_guard lock(TheDoor().mutex);
    dropped.swap(TheDoor().queue);
}

void SetPostWaker(std::function<void()> waker) {
    auto shared = std::make_shared<const std::function<void()>>(std::move(waker));
    const std::lock_guard lock(TheDoor().mutex);
    TheDoor().waker.swap(shared);
    TheDoor().isWoken = false;
}

}  // namespace hullrider
