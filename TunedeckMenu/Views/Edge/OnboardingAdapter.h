#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"
#include "TunedeckMenu/Views/Edge/Types.h"

#include <QObject>
#include <QQmlEngine>

namespace tunedeck {

/// The first-run window's content as QML sees it, and the way back for what was pressed there.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Onboarding)
    QML_SINGLETON
    Q_PROPERTY(tunedeck::OnboardingContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QAbstractItemModel* tools READ tools CONSTANT)
    Q_PROPERTY(QAbstractItemModel* assistants READ assistants CONSTANT)
    Q_PROPERTY(QAbstractItemModel* fields READ fields CONSTANT)
public:
    /// Belongs to `engine`, whose windows show it. The host is asked for its first-run parts only while they are there.
    OnboardingModel(PanelHost& host, QQmlEngine& engine);
    /// The one of that engine.
    static OnboardingModel* create(QQmlEngine* engine, QJSEngine*);

    /// Becomes `content`.
    void take(const OnboardingContent& content);

    [[nodiscard]] OnboardingContent content() const { return m_content; }
    [[nodiscard]] QAbstractItemModel* tools() { return &m_tools; }
    [[nodiscard]] QAbstractItemModel* assistants() { return &m_assistants; }
    [[nodiscard]] QAbstractItemModel* fields() { return &m_fields; }

    Q_INVOKABLE void advance() { actions().advance(); }
    Q_INVOKABLE void back() { actions().back(); }
    Q_INVOKABLE void repairTools() { actions().repairTools(); }
    Q_INVOKABLE void takeBaseline() { actions().takeBaseline(); }
    Q_INVOKABLE void choose(const QString& kind) { actions().choose(kind); }
    Q_INVOKABLE void copyLink() { actions().copyLink(); }
    Q_INVOKABLE void copyKey() { actions().copyKey(); }
    Q_INVOKABLE void openTelegram() { actions().openTelegram(); }
    Q_INVOKABLE void newTelegramCode() { actions().newTelegramCode(); }
    Q_INVOKABLE void openSetupGuide() { actions().openSetupGuide(); }

Q_SIGNALS:
    void contentChanged();

private:
    OnboardingActions& actions() { return m_host.onboardingActions(); }

    PanelHost& m_host;
    OnboardingContent m_content;
    KeyedModel<ToolRowView> m_tools{&ToolRowView::name};
    KeyedModel<ConnectRowView> m_assistants{&ConnectRowView::id};
    KeyedModel<SecretFieldView> m_fields{&SecretFieldView::key};
};

} // namespace tunedeck
