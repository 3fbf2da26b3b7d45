#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

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

FooterView footer(bool opensAtLogin, bool isRestarting);

} // namespace tunedeck
