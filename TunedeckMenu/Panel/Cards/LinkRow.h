#pragma once

#include "TunedeckMenu/Panel/Cards/SecretField.h"
#include "TunedeckMenu/Panel/Cards/TelegramPairing.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

/// The menu of a link, and the button that opens it.
struct LinkMenuView {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(QString renew MEMBER renew)
    Q_PROPERTY(QString guide MEMBER guide)
    Q_PROPERTY(QString disconnect MEMBER disconnect)
public:
    QString label;
    QString description; ///< which link it belongs to
    QString renew;       ///< "New URL…", "New Key…"; empty when the menu has no such entry
    QString guide;
    QString disconnect;
    bool operator==(const LinkMenuView&) const = default;
};

/// One assistant link; its identity is `id`.
struct LinkRowView {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(tunedeck::look::LinkKind kind MEMBER kind)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(bool connected MEMBER connected)
    Q_PROPERTY(tunedeck::LinkMenuView menu MEMBER menu)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QList<tunedeck::SecretFieldView> fields MEMBER fields)
    Q_PROPERTY(tunedeck::TelegramPairingView pairing MEMBER pairing)
    Q_PROPERTY(QString guideTitle MEMBER guideTitle)
    Q_PROPERTY(QString guideHelp MEMBER guideHelp)
    Q_PROPERTY(QString guideDescription MEMBER guideDescription)
public:
    QString id;
    look::LinkKind kind = look::LinkKind::PrivateUrl;
    QString name;
    QString detail; ///< "· used yesterday", "· paired", …
    bool connected = false;
    LinkMenuView menu;
    QString text; ///< a line above the fields, or instead of them
    QList<SecretFieldView> fields;
    TelegramPairingView pairing;
    QString guideTitle; ///< of the link below the fields; empty when it isn't there
    QString guideHelp;
    QString guideDescription; ///< the help, and what tells the link from its equals
    bool operator==(const LinkRowView&) const = default;
};

/// The rows of all links.
QList<LinkRowView> linkRows(const PanelState& state, const QDateTime& now);
/// The link to an assistant's setup guide.
QString guideTitle();
QString guideHelp(Assistant assistant);

} // namespace tunedeck
