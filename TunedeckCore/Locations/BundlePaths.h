#pragma once

#include <QString>

#include <utility>

namespace tunedeck {

/// Where things are in an application bundle, which has the same layout on every platform.
class BundlePaths {
public:
    explicit BundlePaths(QString bundle) : m_bundle(std::move(bundle)) {}

    /// The bundle that contains the program at this path, or the program's folder when it isn't in a bundle.
    static BundlePaths containing(const QString& program);

    [[nodiscard]] const QString& bundle() const { return m_bundle; }
    [[nodiscard]] QString infoPlist() const { return below("Info.plist"); }
    [[nodiscard]] QString application() const { return below("MacOS/Tunedeck"); }
    [[nodiscard]] QString service() const { return below("Helpers/tunedeck"); }
    [[nodiscard]] QString updateHelper() const { return below("Helpers/tunedeck-update"); }
    [[nodiscard]] QString panelModule() const { return below("PlugIns/TunedeckPanel.so"); }
    [[nodiscard]] QString icon() const { return below("Resources/tunedeck-128.png"); }
    /// The guide's page about desktops.
    [[nodiscard]] QString desktopGuide() const { return below("Resources/desktops.txt"); }

private:
    [[nodiscard]] QString below(const char* relative) const;

    QString m_bundle;
};

} // namespace tunedeck
