#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"
#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include <QObject>
#include <QQuickWindow>

#include <memory>

namespace tunedeck {

/// The first-run window.
class FirstRunWindow : public QObject {
    Q_OBJECT
public:
    /// Both must outlive the window.
    FirstRunWindow(const WindowFactory& factory, OnboardingAdapter& adapter);
    ~FirstRunWindow() override;

    /// Shows it and brings it to the front. `actions` must live until close().
    void show(OnboardingActions& actions);
    void close();

private:
    void create();

    const WindowFactory& m_factory;
    OnboardingAdapter& m_adapter;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace tunedeck
