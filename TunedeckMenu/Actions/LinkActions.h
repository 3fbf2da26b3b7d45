#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Actions/FieldCopier.h"
#include "TunedeckMenu/Model/InFlight.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <functional>
#include <map>

namespace tunedeck {

/// The actions on the connections to assistants. If a link has changed while its question was open, nothing is sent and
/// an error is shown.
class LinkActions : public QObject {
public:
    template<class T>
    using Result = LinksClient::Result<T>;
    /// Called once with the outcome of a request, unless the actions are destroyed first.
    template<class T>
    using ResultHandler = std::function<void(const Result<T>&)>;

    LinkActions(PanelActions& panel, MenuModel& model, const MenuServices& services, FieldCopier& copier);

    /// Creates a link and shows what to do next, or the error, in the panel.
    void connectAssistant(Assistant assistant, ResultHandler<AssistantLink> done = {});
    /// Gives a Telegram link a new pairing code. The caller reports the outcome, usually with reportNewCode().
    void renewCode(const QString& id, ResultHandler<AssistantLink> done);
    static void reportNewCode(const Result<AssistantLink>& renewed, ActionFeedback& feedback);

private:
    using Step = void (LinkActions::*)(const AssistantLink& link);
    /// Asks the question about a link, then runs the step if the user agrees and the link is unchanged.
    void confirm(const QString& id, Confirmation (*question)(const AssistantLink&), Step step);
    QCoro::Task<> create(Assistant assistant, ResultHandler<AssistantLink> done);
    void showNextStep(Assistant assistant, const AssistantLink& link);
    void rotate(const AssistantLink& link);
    void rotated(const AssistantLink& link, const Result<AssistantLink>& renewed);
    void renewPanelCode(const AssistantLink& link);
    void remove(const AssistantLink& link);
    /// Runs a request that changes links: marks the card busy, clears the error, and refreshes the list on success.
    template<class T>
    QCoro::Task<> change(QCoro::Task<Result<T>> request, ResultHandler<T> done);

    void openSetupGuide(const QString& id);
    void openTelegram(const QString& id);
    void copySecret(const QString& key);

    MenuModel& m_model;
    const MenuServices& m_services;
    FieldCopier& m_copier;
    std::map<Assistant, InFlight> m_connecting;
    TaskScope m_scope;
};

} // namespace tunedeck
