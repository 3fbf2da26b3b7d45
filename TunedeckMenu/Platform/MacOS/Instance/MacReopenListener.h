#pragma once

#include "TunedeckMenu/Platform/ReopenListener.h"

@class MacReopenHandler;

namespace tunedeck {

/// Receives what Launch Services send when the application is opened while it runs. Qt owns the application's delegate,
/// so this handles the event behind applicationShouldHandleReopen.
class MacReopenListener final : public ReopenListener {
public:
    MacReopenListener();
    ~MacReopenListener() override;

    void start() override;

private:
    MacReopenHandler* m_handler;
};

} // namespace tunedeck
