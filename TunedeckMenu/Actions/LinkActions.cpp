#include "TunedeckMenu/Actions/LinkActions.h"

#include "TunedeckCore/Locations/WebEndpoint.h"

#include <utility>

namespace tunedeck {

namespace {

bool isShortcut(const AssistantLink& link) {
    return link.assistant() == Assistant::iphone;
}

/// The copy key of a link's secret.
QString copyKey(const AssistantLink& link) {
    return link.id + (isShortcut(link) ? QStringLiteral(".key") : QStringLiteral(".url"));
}

Confirmation rotateQuestion(const AssistantLink& link) {
    const auto word = isShortcut(link) ? QStringLiteral("key") : QStringLiteral("URL");
    const auto place = isShortcut(link) ? QStringLiteral("your Shortcut") : link.displayName();
    return {
        .message = QStringLiteral("Make a new %1 for %2?").arg(word, link.displayName()),
        .informativeText = QStringLiteral("The current %1 stops working right away. Put the new one into %2 to keep "
                                          "using Tunedeck there.")
                               .arg(word, place),
        .confirmButton = isShortcut(link) ? QStringLiteral("New Key") : QStringLiteral("New URL"),
        .cancelButton = QStringLiteral("Cancel"),
    };
}

Confirmation newCodeQuestion(const AssistantLink& link) {
    return {
        .message = QStringLiteral("Pair a different Telegram chat?"),
        .informativeText = link.displayName() + QStringLiteral(" stops working with Tunedeck right away. Scan the new "
                                                               "code to pair again."),
        .confirmButton = QStringLiteral("New Code"),
        .cancelButton = QStringLiteral("Cancel"),
    };
}

Confirmation disconnectQuestion(const AssistantLink& link) {
    const bool telegram = link.assistant() == Assistant::telegram;
    return {
        .message = QStringLiteral("Disconnect %1?").arg(link.displayName()),
        .informativeText =
            telegram ? QStringLiteral("The bot stops answering that chat right away. You can pair again later.")
                     : QStringLiteral("It stops working with Tunedeck right away. You can connect it again later."),
        .confirmButton = QStringLiteral("Disconnect"),
        .cancelButton = QStringLiteral("Cancel"),
        .warning = true,
    };
}

/// Whether what the user was asked about is still what it was: not its last use, but what would be lost.
bool isSame(const AssistantLink& asked, const AssistantLink& present) {
    return asked.kind == present.kind && asked.url == present.url && asked.token == present.token &&
           asked.paired == present.paired;
}

} // namespace

template<class T>
QCoro::Task<LinksClient::Result<T>> LinkActions::change(QCoro::Task<Result<T>> call,
                                                        std::function<bool(const Result<T>&)> finish) {
    const auto stop = m_scope.token();
    m_model.linksWork(+1);
    m_model.clearError();
    auto result = co_await call;
    if (stop.stop_requested()) {
        co_return result;
    }
    if (finish(result)) {
        co_await m_model.refreshLinks(true, stop);
        if (stop.stop_requested()) {
            co_return result;
        }
    }
    m_model.linksWork(-1);
    co_return result;
}

template<class T>
QCoro::Task<> LinkActions::changeUnheeded(QCoro::Task<Result<T>> call, std::function<bool(const Result<T>&)> finish) {
    co_await change<T>(std::move(call), std::move(finish));
}

QCoro::Task<LinksClient::Result<AssistantLink>> LinkActions::connect(Assistant assistant) {
    return change<AssistantLink>(
        m_services.links.create(assistant, m_scope.token()), [this, assistant](const Result<AssistantLink>& made) {
            if (made) {
                m_model.storeLink(*made);
                announce(assistant, *made);
            } else if (made.error().code == QStringLiteral("telegram_not_configured")) {
                m_model.show(QStringLiteral(
                    "Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."));
            } else {
                m_model.show(QStringLiteral("Couldn't connect %1: %2").arg(info(assistant).name, made.error().message));
            }
            return made.has_value();
        });
}

void LinkActions::announce(Assistant assistant, const AssistantLink& link) {
    switch (assistant) {
    case Assistant::iphone:
        m_model.showNote(QStringLiteral("Follow the setup guide on your iPhone, using the URL and key shown here."));
        return;
    case Assistant::telegram:
        m_model.showNote(QStringLiteral("Scan the code with your phone, then tap Start in Telegram."));
        return;
    case Assistant::chatgpt:
    case Assistant::claude:
        break;
    }
    if (!link.url) {
        return;
    }
    m_clipboard.copy(*link.url, copyKey(link));
    m_model.showNote(QStringLiteral("Copied %1's URL. ").arg(info(assistant).name) +
                     info(assistant).setupSteps.join(u' '));
}

void LinkActions::connectAssistant(Assistant assistant) {
    if (m_connecting.insert(assistant).second) {
        spawn(connectFromPanel(assistant));
    }
}

QCoro::Task<> LinkActions::connectFromPanel(Assistant assistant) {
    const auto stop = m_scope.token();
    co_await connect(assistant);
    if (!stop.stop_requested()) {
        m_connecting.erase(assistant);
    }
}

void LinkActions::ask(const QString& id, Confirmation question, Step step) {
    const auto* asked = m_model.link(id);
    if (asked == nullptr || !m_services.confirm) {
        return;
    }
    auto answered = [this, step, link = *asked, stop = m_scope.token()](bool confirmed) {
        if (!confirmed || stop.stop_requested()) {
            return;
        }
        const auto* present = m_model.link(link.id);
        if (present != nullptr && isSame(link, *present)) {
            spawn((this->*step)(*present));
        } else {
            m_model.show(link.displayName() + QStringLiteral(" has changed in the meantime, so nothing was done."));
        }
    };
    m_services.confirm(std::move(question), std::move(answered));
}

void LinkActions::rotate(const QString& id) {
    if (const auto* link = m_model.link(id)) {
        ask(id, rotateQuestion(*link), &LinkActions::rotateConfirmed);
    }
}

QCoro::Task<> LinkActions::rotateConfirmed(const AssistantLink& link) {
    return changeUnheeded<AssistantLink>(
        m_services.links.rotate(link.id, m_scope.token()), [this, link](const Result<AssistantLink>& renewed) {
            const auto secret = !renewed ? std::nullopt : isShortcut(link) ? renewed->token : renewed->url;
            if (!secret) {
                const auto reason =
                    renewed ? QStringLiteral("Unexpected reply from tunedeck.") : renewed.error().message;
                m_model.show((isShortcut(link) ? QStringLiteral("Couldn't make a new key: ")
                                               : QStringLiteral("Couldn't make a new URL: ")) +
                             reason);
                return false;
            }
            m_model.storeLink(*renewed);
            m_clipboard.copy(*secret, copyKey(link));
            m_model.showNote(isShortcut(link)
                                 ? QStringLiteral("New key copied. Paste it into your Shortcut's Authorization header.")
                                 : QStringLiteral("New URL copied. Paste it into ") + link.displayName());
            return true;
        });
}

void LinkActions::newTelegramCode(const QString& id) {
    if (const auto* link = m_model.link(id)) {
        ask(id, newCodeQuestion(*link), &LinkActions::newCodeConfirmed);
    }
}

QCoro::Task<> LinkActions::newCodeConfirmed(const AssistantLink& link) {
    return changeUnheeded<AssistantLink>(
        m_services.links.rotate(link.id, m_scope.token()), [this](const Result<AssistantLink>& renewed) {
            if (renewed) {
                m_model.storeLink(*renewed);
                m_model.showNote(QStringLiteral("New code ready. Scan it with your phone."));
            } else {
                m_model.show(QStringLiteral("Couldn't make a new code: ") + renewed.error().message);
            }
            return renewed.has_value();
        });
}

void LinkActions::disconnect(const QString& id) {
    if (const auto* link = m_model.link(id)) {
        ask(id, disconnectQuestion(*link), &LinkActions::disconnectConfirmed);
    }
}

QCoro::Task<> LinkActions::disconnectConfirmed(const AssistantLink& link) {
    return changeUnheeded<void>(m_services.links.remove(link.id, m_scope.token()),
                                [this, id = link.id](const Result<void>& removed) {
                                    if (removed) {
                                        m_model.removeLink(id);
                                    } else {
                                        m_model.show(QStringLiteral("Couldn't disconnect: ") + removed.error().message);
                                    }
                                    return removed.has_value();
                                });
}

void LinkActions::openSetupGuide(const QString& id) {
    const auto* link = m_model.link(id);
    if (link == nullptr) {
        return;
    }
    const auto assistant = link->assistant();
    // A kind that this version doesn't know has its guide among the others.
    open(assistant ? guideURL(*assistant) : WebEndpoint::url(QStringLiteral("/connect/")));
}

void LinkActions::openTelegram(const QString& id) {
    if (const auto* link = m_model.link(id); link != nullptr && link->url) {
        open(QUrl(*link->url));
    }
}

void LinkActions::open(const QUrl& url) {
    if (!m_services.workspace.open(url)) {
        m_model.show(QStringLiteral("Couldn't open %1.").arg(url.toDisplayString()));
    }
}

void LinkActions::copySecret(const QString& key) {
    const auto dot = key.lastIndexOf(u'.');
    const auto* link = dot < 0 ? nullptr : m_model.link(key.left(dot));
    if (link == nullptr) {
        return;
    }
    std::optional<QString> value;
    if (key.endsWith(QStringLiteral(".key"))) {
        value = link->token;
    } else if (key.endsWith(QStringLiteral(".url"))) {
        value = isShortcut(*link) ? link->apiUrl : link->url;
    }
    if (value) {
        m_clipboard.copy(*value, key);
    }
}

} // namespace tunedeck
