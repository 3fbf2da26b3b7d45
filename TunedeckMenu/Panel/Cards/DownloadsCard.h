#pragma once

#include "TunedeckMenu/Panel/Banner.h"
#include "TunedeckMenu/Panel/ServiceState.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tunedeck {

struct DownloadsView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(bool hasFolder MEMBER hasFolder)
    Q_PROPERTY(QString folderPath MEMBER folderPath)
    Q_PROPERTY(QString folderTitle MEMBER folderTitle)
    Q_PROPERTY(QString folderSubtitle MEMBER folderSubtitle)
    Q_PROPERTY(QString folderHelp MEMBER folderHelp)
    Q_PROPERTY(QString stoppedText MEMBER stoppedText)
    Q_PROPERTY(tunedeck::BannerView warning MEMBER warning)
    Q_PROPERTY(QString changeButton MEMBER changeButton)
    Q_PROPERTY(QString changeHelp MEMBER changeHelp)
    Q_PROPERTY(QString defaultButton MEMBER defaultButton)
    Q_PROPERTY(QString note MEMBER note)
public:
    QString title;
    QString symbol;
    QString badge;
    bool hasFolder = false;
    QString folderPath; ///< whole, for its icon
    QString folderTitle;
    QString folderSubtitle;
    QString folderHelp;
    QString stoppedText; ///< instead of the folder while the service isn't running
    BannerView warning;
    QString changeButton;
    QString changeHelp;
    QString defaultButton; ///< empty when the folder is the default one
    QString note;
    bool operator==(const DownloadsView&) const = default;
};

/// `customFolder`: the folder that the settings file names.
DownloadsView downloadsCard(const ServiceState& service, const std::optional<QString>& customFolder,
                            const QString& home);

} // namespace tunedeck
