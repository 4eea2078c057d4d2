// What is printed while it lives. One at a time; each text can be asked for once.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace hullrider {

class ConsoleCapture {
public:
    ConsoleCapture() {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }
    // A failed test's own report is among what was captured: it is handed on.
    ~ConsoleCapture() {
        std::string report;
        if (!outputTaken_) report = testing::internal::GetCapturedStdout();
        if (!errorsTaken_) report += testing::internal::GetCapturedStderr();
        if (testing::Test::HasFailure()) std::cout << report << std::flush;
    }
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    // With "\n" line ends on every system.
    std::string Output() {
        outputTaken_ = true;
        return WithoutReturns(testing::internal::GetCapturedStdout());
    }
    std::string Errors() {
        errorsTaken_ = true;
        return WithoutReturns(testing::internal::GetCapturedStderr());
    }

private:
    static std::string WithoutReturns(std::string text) {
        std::erase(text, '\r');
        return text;
    }

    bool outputTaken_ = false;
    bool errorsTaken_ = false;
};

}  // namespace hullrider
