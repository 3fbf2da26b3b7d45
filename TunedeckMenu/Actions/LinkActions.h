#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Actions/Clipboard.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <functional>
#include <set>

namespace tunedeck {

/// What the user can do about the connections to assistants. What was asked about may have changed by the time a
/// question is answered; then nothing is sent and a line says so.
class LinkActions {
public:
    LinkActions(MenuModel& model, const MenuServices& services, Clipboard& clipboard)
        : m_model(model), m_services(services), m_clipboard(clipboard) {}

    /// Makes a link, tells the user how to go on, and gives the link or the failure, which is then the error line too.
    QCoro::Task<LinksClient::Result<AssistantLink>> connect(Assistant assistant);
    /// The same for a button of the panel; while a link of that kind is being made, it does nothing.
    void connectAssistant(Assistant assistant);
    /// Asks, then gives a link a new URL or key and copies it.
    void rotate(const QString& id);
    /// Asks, then gives a Telegram link a new pairing code.
    void newTelegramCode(const QString& id);
    /// Asks, then removes a link.
    void disconnect(const QString& id);

    /// Opens the setup guide of a link's assistant.
    void openSetupGuide(const QString& id);
    /// Opens a Telegram link's start URL.
    void openTelegram(const QString& id);
    /// Copies a link's URL or key, whole, by its copy key.
    void copySecret(const QString& key);

private:
    template<class T>
    using Result = LinksClient::Result<T>;
    using Step = QCoro::Task<> (LinkActions::*)(const AssistantLink& link);
    void ask(const QString& id, Confirmation question, Step step);
    QCoro::Task<> connectFromPanel(Assistant assistant);
    QCoro::Task<> rotateConfirmed(const AssistantLink& link);
    QCoro::Task<> newCodeConfirmed(const AssistantLink& link);
    QCoro::Task<> disconnectConfirmed(const AssistantLink& link);
    /// The frame of every call that changes the links: the card is busy meanwhile, an old error goes, and after a
    /// success, which `finish` judges and tells the user of, the links are fetched afresh.
    template<class T>
    QCoro::Task<Result<T>> change(QCoro::Task<Result<T>> call, std::function<bool(const Result<T>&)> finish);
    template<class T>
    QCoro::Task<> changeUnheeded(QCoro::Task<Result<T>> call, std::function<bool(const Result<T>&)> finish);
    void open(const QUrl& url);
    void announce(Assistant assistant, const AssistantLink& link);

    MenuModel& m_model;
    const MenuServices& m_services;
    Clipboard& m_clipboard;
    std::set<Assistant> m_connecting;
    TaskScope m_scope;
};

} // namespace tunedeck
