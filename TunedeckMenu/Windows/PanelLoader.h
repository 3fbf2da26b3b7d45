#pragma once

#include "TunedeckMenu/Platform/NotificationCenter.h"
#include "TunedeckMenu/Windows/ViewsSource.h"

#include <QPluginLoader>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

/// Loads the module with the windows when they are first needed.
class PanelLoader final : public ViewsSource {
public:
    struct Options {
        QString module;                    ///< path
        QString buildId;                   ///< a module of another build isn't loaded
        std::function<bool()> wasReplaced; ///< whether the program on disk isn't the running one
        std::function<bool()> restart;     ///< starts the program on disk with its window, and quits; false on failure
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
