#pragma once

#include "TunedeckMenu/Panel/UpdateState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>

namespace tunedeck {

struct AboutView {
    Q_GADGET
    VIEW_PROPERTY(QString, title) = u"About"_s;
    VIEW_PROPERTY(QString, version);
    VIEW_PROPERTY(QString, updateText);
    VIEW_PROPERTY(QString, updateDetail); ///< the release notes; may be empty
    VIEW_PROPERTY(QString, updateButton); ///< empty when there is no update to install
    VIEW_PROPERTY(QString, checkButton) = u"Check for Updates"_s;
    VIEW_PROPERTY(bool, busy) = false;    ///< a check or an installation is running
    VIEW_PROPERTY(QString, busyHelp);     ///< why the buttons are disabled; empty when they aren't
    VIEW_PROPERTY(double, progress) = -1; ///< of the download, 0 to 1; negative when unknown
    VIEW_PROPERTY(QString, diagnosticsButton) = u"Copy Diagnostics"_s;
    VIEW_PROPERTY(QString, diagnosticsHelp) = u"Versions, tool states and recent errors, with every "
                                              "secret masked, for support"_s;
    bool operator==(const AboutView&) const = default;
};

AboutView aboutCard(const QString& appVersion, const UpdateState& update, const QDateTime& now);

} // namespace tunedeck
