#include "TunedeckMenu/Actions/LinkActions.h"

#include "TunedeckCore/Locations/WebEndpoint.h"
#include "TunedeckMenu/Actions/Openers.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

bool isShortcut(const AssistantLink& link) {
    return link.assistant() == Assistant::iphone;
}

QString nameOf(const AssistantLink& link) {
    return oneLine(link.displayName());
}

/// The copy key of a link's secret, as in SecretFieldView.
QString copyKey(const AssistantLink& link) {
    return link.id + (isShortcut(link) ? u".key"_s : u".url"_s);
}

Confirmation rotateQuestion(const AssistantLink& link) {
    const auto word = isShortcut(link) ? u"key"_s : u"URL"_s;
    const auto place = isShortcut(link) ? u"your Shortcut"_s : nameOf(link);
    return {
        .message = u"Make a new %1 for %2?"_s.arg(word, nameOf(link)),
        .informativeText = u"The current %1 stops working right away. Put the new one into %2 to keep "
                           "using Tunedeck there."_s.arg(word, place),
        .confirmButton = isShortcut(link) ? u"New Key"_s : u"New URL"_s,
        .cancelButton = u"Cancel"_s,
    };
}

Confirmation newCodeQuestion(const AssistantLink& link) {
    return {
        .message = u"Pair a different Telegram chat?"_s,
        .informativeText = nameOf(link) + u" stops working with Tunedeck right away. Scan the new "
                                          "code to pair again."_s,
        .confirmButton = u"New Code"_s,
        .cancelButton = u"Cancel"_s,
    };
}

Confirmation disconnectQuestion(const AssistantLink& link) {
    const bool telegram = link.assistant() == Assistant::telegram;
    return {
        .message = u"Disconnect %1?"_s.arg(nameOf(link)),
        .informativeText = telegram ? u"The bot stops answering that chat right away. You can pair again later."_s
                                    : u"It stops working with Tunedeck right away. You can connect it again later."_s,
        .confirmButton = u"Disconnect"_s,
        .cancelButton = u"Cancel"_s,
        .warning = true,
    };
}

/// Whether the action would still affect what the user was asked about. Ignores the time of the last use.
bool isSame(const AssistantLink& asked, const AssistantLink& current) {
    return asked.kind == current.kind && asked.url == current.url && asked.token == current.token &&
           asked.paired == current.paired;
}

} // namespace

LinkActions::LinkActions(PanelActions& panel, MenuModel& model, const MenuServices& services, FieldCopier& copier)
    : m_model(model), m_services(services), m_copier(copier) {
    connect(&panel, &PanelActions::connectAssistant, this, [this](const QString& kind) {
        const auto assistant = assistantFromRawValue(kind);
        if (assistant && !m_connecting[*assistant].isBusy()) {
            connectAssistant(*assistant);
        }
    });
    connect(&panel, &PanelActions::rotateLink, this,
            [this](const QString& id) { confirm(id, rotateQuestion, &LinkActions::rotate); });
    connect(&panel, &PanelActions::newTelegramCode, this,
            [this](const QString& id) { confirm(id, newCodeQuestion, &LinkActions::renewPanelCode); });
    connect(&panel, &PanelActions::disconnectLink, this,
            [this](const QString& id) { confirm(id, disconnectQuestion, &LinkActions::remove); });
    connect(&panel, &PanelActions::openSetupGuide, this, &LinkActions::openSetupGuide);
    connect(&panel, &PanelActions::openTelegram, this, &LinkActions::openTelegram);
    connect(&panel, &PanelActions::copySecret, this, &LinkActions::copySecret);
}

template<class T>
QCoro::Task<> LinkActions::change(QCoro::Task<Result<T>> request, ResultHandler<T> done) {
    const auto stop = m_scope.token();
    const auto busy = m_model.beginLinksWork();
    m_model.clearError();
    const auto result = co_await request;
    if (stop.stop_requested()) {
        co_return;
    }
    done(result);
    if (result) {
        co_await m_model.refreshLinks(MenuModel::LinksFetch::Always, stop);
    }
}

void LinkActions::connectAssistant(Assistant assistant, ResultHandler<AssistantLink> done) {
    spawn(create(assistant, std::move(done)));
}

QCoro::Task<> LinkActions::create(Assistant assistant, ResultHandler<AssistantLink> done) {
    const auto inFlight = m_connecting[assistant].begin();
    ResultHandler<AssistantLink> report = [this, assistant, done](const Result<AssistantLink>& made) {
        if (made) {
            m_model.storeLink(*made);
            showNextStep(assistant, *made);
        } else if (made.error().code == u"telegram_not_configured"_s) {
            m_model.showError(u"Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."_s);
        } else {
            m_model.showError(u"Couldn't connect %1: %2"_s.arg(info(assistant).name, made.error().message));
        }
        if (done) {
            done(made);
        }
    };
    co_await change(m_services.links.create(assistant, m_scope.token()), std::move(report));
}

void LinkActions::showNextStep(Assistant assistant, const AssistantLink& link) {
    switch (assistant) {
    case Assistant::iphone:
        m_model.showNote(u"Follow the setup guide on your iPhone, using the URL and key shown here."_s);
        break;
    case Assistant::telegram:
        m_model.showNote(u"Scan the code with your phone, then tap Start in Telegram."_s);
        break;
    case Assistant::chatgpt:
    case Assistant::claude:
        if (!link.url) {
            return;
        }
        m_copier.copy(*link.url, copyKey(link));
        m_model.showNote(u"Copied %1's URL. "_s.arg(info(assistant).name) + info(assistant).setupSteps.join(u' '));
        break;
    }
    m_model.keepNoteWith(link);
}

void LinkActions::confirm(const QString& id, Confirmation (*question)(const AssistantLink&), Step step) {
    const auto* asked = m_model.link(id);
    if (asked == nullptr) {
        return;
    }
    auto answered = [this, step, link = *asked, stop = m_scope.token()](bool confirmed) {
        if (!confirmed || stop.stop_requested()) {
            return;
        }
        const auto* current = m_model.link(link.id);
        if (current != nullptr && isSame(link, *current)) {
            (this->*step)(link);
        } else {
            m_model.showError(link.displayName() + u" has changed in the meantime, so nothing was done."_s);
        }
    };
    m_services.confirm(question(*asked), std::move(answered));
}

void LinkActions::rotate(const AssistantLink& link) {
    ResultHandler<AssistantLink> done = [this, link](const Result<AssistantLink>& renewed) { rotated(link, renewed); };
    spawn(change(m_services.links.rotate(link.id, m_scope.token()), std::move(done)));
}

void LinkActions::rotated(const AssistantLink& link, const Result<AssistantLink>& renewed) {
    const bool isKey = isShortcut(link);
    const auto secret = !renewed ? std::nullopt : isKey ? renewed->token : renewed->url;
    if (!secret) {
        m_model.showError((isKey ? u"Couldn't make a new key: "_s : u"Couldn't make a new URL: "_s) +
                          (renewed ? u"Unexpected reply from tunedeck."_s : renewed.error().message));
        return;
    }
    m_model.storeLink(*renewed);
    m_copier.copy(*secret, copyKey(link));
    m_model.showNote(isKey ? u"New key copied. Paste it into your Shortcut's Authorization header."_s
                           : u"New URL copied. Paste it into "_s + link.displayName());
    m_model.keepNoteWith(*renewed);
}

void LinkActions::renewPanelCode(const AssistantLink& link) {
    renewCode(link.id, [this](const Result<AssistantLink>& renewed) {
        reportNewCode(renewed, m_model);
        if (renewed) {
            m_model.keepNoteWith(*renewed);
        }
    });
}

void LinkActions::renewCode(const QString& id, ResultHandler<AssistantLink> done) {
    ResultHandler<AssistantLink> store = [this, done = std::move(done)](const Result<AssistantLink>& renewed) {
        if (renewed) {
            m_model.storeLink(*renewed);
        }
        done(renewed);
    };
    spawn(change(m_services.links.rotate(id, m_scope.token()), std::move(store)));
}

void LinkActions::reportNewCode(const Result<AssistantLink>& renewed, ActionFeedback& feedback) {
    if (renewed) {
        feedback.showNote(u"New code ready. Scan it with your phone."_s);
    } else {
        feedback.showError(u"Couldn't make a new code: "_s + renewed.error().message);
    }
}

void LinkActions::remove(const AssistantLink& link) {
    ResultHandler<void> done = [this, id = link.id](const Result<void>& removed) {
        if (removed) {
            m_model.removeLink(id);
        } else {
            m_model.showError(u"Couldn't disconnect: "_s + removed.error().message);
        }
    };
    spawn(change(m_services.links.remove(link.id, m_scope.token()), std::move(done)));
}

void LinkActions::openSetupGuide(const QString& id) {
    const auto* link = m_model.link(id);
    if (link == nullptr) {
        return;
    }
    const auto assistant = link->assistant();
    // An assistant that this version doesn't know has its guide on the overview page.
    const auto url = assistant ? guideURL(*assistant) : WebEndpoint::url(u"/connect/"_s);
    openUrl(url, m_services.workspace, m_model);
}

void LinkActions::openTelegram(const QString& id) {
    if (const auto* link = m_model.link(id); link != nullptr && link->url) {
        openTelegramUrl(*link->url, m_services.workspace, m_model);
    }
}

void LinkActions::copySecret(const QString& key) {
    const auto dot = key.lastIndexOf(u'.');
    const auto* link = dot < 0 ? nullptr : m_model.link(key.left(dot));
    if (link == nullptr) {
        return;
    }
    std::optional<QString> value;
    if (key.endsWith(u".key"_s)) {
        value = link->token;
    } else if (key.endsWith(u".url"_s)) {
        value = isShortcut(*link) ? link->apiUrl : link->url;
    }
    if (value) {
        m_copier.copy(*value, key);
    }
}

} // namespace tunedeck
