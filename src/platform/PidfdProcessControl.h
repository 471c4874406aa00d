#pragma once

#include "ProcessControl.h"

// Signals through pidfd_open/pidfd_send_signal and watches exit by polling the pidfd.
class PidfdProcessControl : public ProcessControl
{
public:
    std::shared_ptr<ProcessHandle> open(const RunningApplications::Instance& instance) override;
};
