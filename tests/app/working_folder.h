// While it lives, the process works in another folder, which is made.
#pragma once

#include <filesystem>

namespace hullrider {

class WorkingFolderGuard {
public:
    explicit WorkingFolderGuard(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
    }
    ~WorkingFolderGuard() { std::filesystem::current_path(before_); }
    WorkingFolderGuard(const WorkingFolderGuard&) = delete;
    WorkingFolderGuard& operator=(const WorkingFolderGuard&) = delete;

private:
    std::filesystem::path before_;
};

}  // namespace hullrider
