#pragma once

#include "TunedeckMenu/Platform/NotificationCenter.h"
#include "TunedeckMenu/Windows/ViewsSource.h"

#include <QPluginLoader>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

/// Loads the module that holds the windows, which most of the time aren't needed.
class PanelLoader final : public ViewsSource {
public:
    /// What it is told at the start.
    struct Options {
        QString module;                    ///< path of the module
        QString buildId;                   ///< of this program; a module of another build isn't loaded
        std::function<bool()> wasReplaced; ///< whether the program on disk is another than the one that runs
        std::function<void()> restart;     ///< starts the program on disk, with its window, in place of this one
    };
    PanelLoader(NotificationCenter& notifications, Options options);

    std::unique_ptr<PanelViews> createViews(PanelHost& host, const Appearance& appearance) override;

private:
    void reportFailure(const QString& reason);

    NotificationCenter& m_notifications;
    Options m_options;
    QPluginLoader m_loader;
};

} // namespace tunedeck
