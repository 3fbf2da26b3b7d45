#pragma once

#include <QIcon>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QString>
#include <QVariantMap>

#include <memory>

namespace tunedeck {

/// Creates the windows from the module's QML files.
class WindowFactory {
public:
    /// The engine must outlive this and the windows.
    explicit WindowFactory(QQmlEngine& engine);

    /// A window that is laid out, so that its wanted size is known. `file`: its path in the module. `properties`:
    /// initial values. A file with an error ends the application.
    [[nodiscard]] std::unique_ptr<QQuickWindow> create(const QString& file, const QVariantMap& properties = {}) const;

private:
    QQmlEngine& m_engine;
    QIcon m_icon;
};

} // namespace tunedeck
