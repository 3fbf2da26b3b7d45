#pragma once

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>

/// What the panel says, as plain values: every word, symbol and condition is decided here, none in the views.
/// A card's `shown` says whether it is there. Symbols are the system's own symbol names.
namespace tunedeck {

namespace look {
Q_NAMESPACE

/// What a colour means; the theme knows what it looks like.
enum class Tone { Secondary, Accent, Good, Warning, Bad };
Q_ENUM_NS(Tone)

/// Which kind of row an assistant link has.
enum class LinkKind { PrivateUrl, Shortcut, Telegram };
Q_ENUM_NS(LinkKind)
} // namespace look

struct HeaderView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
public:
    QString title;
    QString status;
    look::Tone tone = look::Tone::Secondary;
    bool operator==(const HeaderView&) const = default;
};

/// A card of one text: the hidden-icon card.
struct TextCardView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QString text;
    bool operator==(const TextCardView&) const = default;
};

struct NotRunningView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(bool starting MEMBER starting)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QString text;
    QString button;
    bool starting = false;
    bool operator==(const NotRunningView&) const = default;
};

/// One job of the recent card; its identity is `id`.
struct JobRowView {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(bool pulsing MEMBER pulsing)
    Q_PROPERTY(QString playlist MEMBER playlist)
    Q_PROPERTY(QString trailing MEMBER trailing)
    Q_PROPERTY(QString stateName MEMBER stateName)
    Q_PROPERTY(QString message MEMBER message)
public:
    QString id;
    QString symbol;
    look::Tone tone = look::Tone::Secondary;
    bool pulsing = false;
    QString playlist;
    QString trailing;  ///< "Downloading" or when it was
    QString stateName; ///< the state in words, for a screen reader
    QString message;   ///< the service's account of the job, for the tooltip
    bool operator==(const JobRowView&) const = default;
};

struct RecentView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QList<JobRowView> jobs;
    bool operator==(const RecentView&) const = default;
};

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

/// A line with a coloured dot or symbol that needs attention or tells of success.
struct BannerView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(QString id MEMBER id)
public:
    bool shown = false;
    QString text;
    QString detail;
    look::Tone tone = look::Tone::Warning; ///< Warning or Good
    QString id;                            ///< identity among its equals
    bool operator==(const BannerView&) const = default;
};

/// A value that can be copied: an assistant's URL or key.
struct SecretFieldView {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString shownValue MEMBER shownValue)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(QString buttonSymbol MEMBER buttonSymbol)
public:
    QString label;      ///< "URL", "Key"; empty for the single URL of a ChatGPT or Claude link
    QString shownValue; ///< masked while secrets are hidden
    QString key;        ///< what the model copies it under
    QString help;
    QString description; ///< the help, and what tells the button from its equals
    QString button;      ///< "Copy" or "Copied"
    QString buttonSymbol;
    bool operator==(const SecretFieldView&) const = default;
};

/// The pairing block of an unpaired Telegram link.
struct TelegramPairingView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString startUrl MEMBER startUrl)
    Q_PROPERTY(bool expired MEMBER expired)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString openButton MEMBER openButton)
    Q_PROPERTY(QString openHelp MEMBER openHelp)
    Q_PROPERTY(QString openDescription MEMBER openDescription)
    Q_PROPERTY(QString newCodeButton MEMBER newCodeButton)
    Q_PROPERTY(QString newCodeHelp MEMBER newCodeHelp)
    Q_PROPERTY(QString newCodeDescription MEMBER newCodeDescription)
    Q_PROPERTY(QString expiryNote MEMBER expiryNote)
    Q_PROPERTY(QString qrName MEMBER qrName)
    Q_PROPERTY(bool busy MEMBER busy)
public:
    bool shown = false;
    QString startUrl; ///< empty when the link was made elsewhere
    bool expired = false;
    QString text;
    QString openButton; ///< empty when there is nothing to open
    QString openHelp;
    QString openDescription; ///< the help, and what tells the button from its equals
    QString newCodeButton;
    QString newCodeHelp;        ///< why it can't be pressed; empty when it can
    QString newCodeDescription; ///< whose code, and why it can't be pressed
    QString expiryNote;         ///< empty when there is none
    QString qrName;
    bool busy = false;
    bool operator==(const TelegramPairingView&) const = default;
};

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

/// One assistant that isn't connected yet; its identity is `id`, the kind's raw value.
struct ConnectRowView {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString plan MEMBER plan)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString symbol MEMBER symbol)
public:
    QString id;
    QString name;
    QString plan; ///< empty when it is free
    QString help;
    QString symbol;
    bool operator==(const ConnectRowView&) const = default;
};

struct AssistantsView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool canReveal MEMBER canReveal)
    Q_PROPERTY(QString revealSymbol MEMBER revealSymbol)
    Q_PROPERTY(QString revealLabel MEMBER revealLabel)
    Q_PROPERTY(QString emptyText MEMBER emptyText)
    Q_PROPERTY(bool busy MEMBER busy)
    Q_PROPERTY(QString cloudText MEMBER cloudText)
    Q_PROPERTY(tunedeck::look::Tone cloudTone MEMBER cloudTone)
public:
    QString title;
    QString symbol;
    bool canReveal = false;
    QString revealSymbol;
    QString revealLabel;
    QString emptyText; ///< empty when there are links
    bool busy = false;
    QList<LinkRowView> links;
    QList<ConnectRowView> connect;
    QString cloudText; ///< empty when there is no cloud line
    look::Tone cloudTone = look::Tone::Secondary;
    bool operator==(const AssistantsView&) const = default;
};

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

/// One backup; its identity is `version`.
struct BackupRowView {
    Q_GADGET
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString date MEMBER date)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString reason MEMBER reason)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(bool canRestore MEMBER canRestore)
public:
    QString version;
    QString date;
    QString badge; ///< "Latest" or empty
    QString reason;
    QString button;
    QString help; ///< which backup the button restores, or why it can't be pressed
    bool canRestore = false;
    bool operator==(const BackupRowView&) const = default;
};

struct RekordboxView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString badgeHelp MEMBER badgeHelp)
    Q_PROPERTY(bool hasLibrary MEMBER hasLibrary)
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString retryButton MEMBER retryButton)
    Q_PROPERTY(QString dismissButton MEMBER dismissButton)
    Q_PROPERTY(QString applyButton MEMBER applyButton)
    Q_PROPERTY(bool busy MEMBER busy)
    Q_PROPERTY(QString busyHelp MEMBER busyHelp)
    Q_PROPERTY(QString backupsTitle MEMBER backupsTitle)
    Q_PROPERTY(QString backupsNote MEMBER backupsNote)
    Q_PROPERTY(QString xmlText MEMBER xmlText)
    Q_PROPERTY(QString xmlSymbol MEMBER xmlSymbol)
    Q_PROPERTY(QString xmlButton MEMBER xmlButton)
    Q_PROPERTY(QString xmlHelp MEMBER xmlHelp)
public:
    QString title;
    QString symbol;
    QString badge; ///< empty when no version is known
    QString badgeHelp;
    bool hasLibrary = false; ///< the items down to the backups are left out without it
    QString headline;
    look::Tone tone = look::Tone::Secondary;
    QString detail;           ///< empty when there is none
    QList<BannerView> failed; ///< one a failed change
    QString retryButton;      ///< empty when no change failed
    QString dismissButton;
    QString applyButton; ///< empty when there is nothing to apply
    bool busy = false;
    QString busyHelp; ///< why the buttons can't be pressed; empty when they can
    QString backupsTitle;
    QString backupsNote; ///< why backups can't be restored; empty when they can
    QList<BackupRowView> backups;
    QString xmlText;
    QString xmlSymbol;
    QString xmlButton; ///< empty when the service isn't running
    QString xmlHelp;
    bool operator==(const RekordboxView&) const = default;
};

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

struct FooterView {
    Q_GADGET
    Q_PROPERTY(QString loginTitle MEMBER loginTitle)
    Q_PROPERTY(bool opensAtLogin MEMBER opensAtLogin)
    Q_PROPERTY(bool restarting MEMBER restarting)
    Q_PROPERTY(QString restartLabel MEMBER restartLabel)
    Q_PROPERTY(QString logLabel MEMBER logLabel)
    Q_PROPERTY(QString quitLabel MEMBER quitLabel)
public:
    QString loginTitle;
    bool opensAtLogin = false;
    bool restarting = false;
    QString restartLabel;
    QString logLabel;
    QString quitLabel;
    bool operator==(const FooterView&) const = default;
};

/// The whole panel, top to bottom. The hidden-icon card is for the detached window alone: the view under the icon
/// leaves it out.
struct PanelContent {
    HeaderView header;
    TextCardView hiddenIcon;
    NotRunningView notRunning;
    RecentView recent;
    ToolsNoticeView tools;
    AssistantsView assistants;
    DownloadsView downloads;
    RekordboxView rekordbox;
    AboutView about;
    BannerView banner;
    FooterView footer;
    bool operator==(const PanelContent&) const = default;
};

} // namespace tunedeck
