#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckCore/UserDefaults.h"
#include "TunedeckMenu/App/AppDelegate.h"
#include "TunedeckMenu/Platform/Platform.h"
#include "TunedeckMenu/Platform/SystemFacts.h"
#include "TunedeckMenu/Windows/PanelLoader.h"

#include <QString>

#include <memory>

namespace tunedeck {

/// Connects the delegate with the platform. Needs a QApplication.
class Application {
public:
    /// The clock must outlive this.
    Application(Clock& clock, const SystemFacts& facts);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    void launch();
    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }

private:
    void watchScreens();

    QString m_bundle;
    std::unique_ptr<Platform> m_platform;
    UserDefaults m_defaults;
    PanelLoader m_loader;
    AppDelegate m_delegate;
    TaskScope m_scope;
};

} // namespace tunedeck
