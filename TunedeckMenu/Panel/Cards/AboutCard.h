#pragma once

#include "TunedeckMenu/Panel/UpdateState.h"

#include <QDateTime>
#include <QObject>
#include <QString>

namespace tunedeck {

struct AboutView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString updateText MEMBER updateText)
    Q_PROPERTY(QString updateDetail MEMBER updateDetail)
    Q_PROPERTY(QString updateButton MEMBER updateButton)
    Q_PROPERTY(QString checkButton MEMBER checkButton)
    Q_PROPERTY(bool busy MEMBER busy)
    Q_PROPERTY(QString busyHelp MEMBER busyHelp)
    Q_PROPERTY(double progress MEMBER progress)
    Q_PROPERTY(QString diagnosticsButton MEMBER diagnosticsButton)
    Q_PROPERTY(QString diagnosticsHelp MEMBER diagnosticsHelp)
public:
    QString title;
    QString symbol;
    QString version;
    QString updateText;
    QString updateDetail; ///< the release's notes; empty when there are none
    QString updateButton; ///< empty when there is no update to install
    QString checkButton;
    bool busy = false;    ///< a check or an installation is under way
    QString busyHelp;     ///< which; empty when there is none
    double progress = -1; ///< of the download, 0 to 1; below 0 when not known
    QString diagnosticsButton;
    QString diagnosticsHelp;
    bool operator==(const AboutView&) const = default;
};

AboutView aboutCard(const QString& appVersion, const UpdateState& update, const QDateTime& now);

} // namespace tunedeck
