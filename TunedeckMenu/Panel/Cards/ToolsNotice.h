#pragma once

#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckMenu/Panel/Look.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tunedeck {

struct ToolsNoticeView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(tunedeck::look::Tone badgeTone MEMBER badgeTone)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(bool installing MEMBER installing)
    Q_PROPERTY(QString installingText MEMBER installingText)
    Q_PROPERTY(double progress MEMBER progress)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QString badge;
    look::Tone badgeTone = look::Tone::Warning;
    QString text;   ///< what is missing; empty when nothing is
    QString detail; ///< the step of an installation, or the last error
    QString button;
    bool installing = false;
    QString installingText;
    double progress = -1; ///< 0 to 1; below 0 when not known
    bool operator==(const ToolsNoticeView&) const = default;
};

ToolsNoticeView toolsNotice(const std::optional<ToolboxReport>& toolbox);

} // namespace tunedeck
