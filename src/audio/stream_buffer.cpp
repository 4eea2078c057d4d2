#include "audio/stream_buffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace hullrider {

namespace {

// Small pieces, which a title block after every few bytes would make, are joined.
constexpr size_t kPieceBytes = 8192;

}  // namespace

bool StreamBuffer::Append(std::string_view bytes) {
    std::unique_lock lock(mutex_);
    taken_.wait(lock, [&] { return isCanceled_ || written_ - read_ < kMostBytes; });
    if (isCanceled_) return false;
    if (pieces_.empty() || pieces_.back().size() + bytes.size() > kPieceBytes) pieces_.emplace_back();
    pieces_.back() += bytes;
    written_ += bytes.size();
    arrived_.notify_all();
    return true;
}

void StreamBuffer::AddTitle(std::string_view title) {
    const std::lock_guard lock(mutex_);
    if (titles_.size() == kMostTitles) titles_.pop_back();
    titles_.push_back({written_, std::string(title)});
}

void StreamBuffer::AddJoint() {
    const std::lock_guard lock(mutex_);
    if (written_ == (joints_.empty() ? 0 : joints_.back())) return;  // nothing to join
    joints_.push_back(written_);
    arrived_.notify_all();
}

void StreamBuffer::End(int error) {
    const std::lock_guard lock(mutex_);
    isEnded_ = true;
    error_ = error;
    arrived_.notify_all();
}

uint64_t StreamBuffer::PartEnd() const {
    return joints_.empty() ? written_ : joints_.front();
}

bool StreamBuffer::HasNews() const {
    return isCanceled_ || isEnded_ || !joints_.empty() || read_ < written_;
}

size_t StreamBuffer::Read(uint8_t* out, size_t size) {
    std::unique_lock lock(mutex_);
    while (!HasNews()) {
        if (!deadline_) {
            arrived_.wait(lock);
        } else if (arrived_.wait_until(lock, *deadline_) == std::cv_status::timeout) {
            return 0;
        }
    }
    if (isCanceled_ || read_ == PartEnd()) return 0;
    const char* const from = pieces_.front().data() + frontTaken_;
    const size_t count = std::min({size, pieces_.front().size() - frontTaken_, static_cast<size_t>(PartEnd() - read_)});
    std::memcpy(out, from, count);
    Take(count);
    taken_.notify_all();
    return count;
}

// Drops up to `size` bytes of the first piece.
void StreamBuffer::Take(size_t size) {
    const size_t count = std::min(size, pieces_.front().size() - frontTaken_);
    read_ += count;
    frontTaken_ += count;
    if (frontTaken_ < pieces_.front().size()) return;
    pieces_.pop_front();
    frontTaken_ = 0;
}

bool StreamBuffer::PassJoint() {
    const std::lock_guard lock(mutex_);
    while (read_ < PartEnd()) Take(static_cast<size_t>(PartEnd() - read_));
    taken_.notify_all();
    if (joints_.empty()) return false;
    joints_.pop_front();
    return true;
}

std::optional<std::string> StreamBuffer::TakeTitle(uint64_t at) {
    const std::lock_guard lock(mutex_);
    std::optional<std::string> title;
    while (!titles_.empty() && titles_.front().at <= at) {
        title = std::move(titles_.front().text);
        titles_.pop_front();
    }
    return title;
}

void StreamBuffer::SetDeadline(std::optional<std::chrono::steady_clock::time_point> deadline) {
    const std::lock_guard lock(mutex_);
    deadline_ = deadline;
    arrived_.notify_all();
}

size_t StreamBuffer::Available() const {
    const std::lock_guard lock(mutex_);
    return isCanceled_ ? 0 : static_cast<size_t>(PartEnd() - read_);
}

size_t StreamBuffer::BytesAhead() const {
    const std::lock_guard lock(mutex_);
    return static_cast<size_t>(written_ - read_);
}

bool StreamBuffer::IsPartComplete() const {
    const std::lock_guard lock(mutex_);
    return isCanceled_ || isEnded_ || !joints_.empty();
}

bool StreamBuffer::IsOver() const {
    const std::lock_guard lock(mutex_);
    return isCanceled_ || (isEnded_ && read_ == written_ && joints_.empty());
}

uint64_t StreamBuffer::BytesRead() const {
    const std::lock_guard lock(mutex_);
    return read_;
}

int StreamBuffer::Error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

void StreamBuffer::Cancel() {
    const std::lock_guard lock(mutex_);
    isCanceled_ = true;
    arrived_.notify_all();
    taken_.notify_all();
}

}  // namespace hullrider
