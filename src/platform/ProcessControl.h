#pragma once

#include "RunningApplications.h"

#include <functional>
#include <memory>

// One running instance, held by a handle to the very process that was found, so that a PID
// reused later is never signalled.
class ProcessHandle
{
public:
    virtual ~ProcessHandle() = default;
    virtual pid_t pid() const = 0;
    // The polite quit; true when the signal was delivered.
    virtual bool terminate() = 0;
    // The forced quit; true when the signal was delivered.
    virtual bool forceTerminate() = 0;
    virtual bool isTerminated() = 0;
    // `ended` runs on the main thread once the process has ended.
    virtual void watchExit(std::function<void()> ended) = 0;
};

class ProcessControl
{
public:
    virtual ~ProcessControl() = default;
    virtual std::shared_ptr<ProcessHandle> open(const RunningApplications::Instance& instance) = 0;
};
