#pragma once

#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"
#include "TunedeckMenu/Views/Edge/Types.h"

#include <QObject>
#include <QQmlEngine>

namespace tunedeck {

/// The content and actions of the first-run window for QML.
class OnboardingAdapter : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Onboarding)
    QML_SINGLETON
    Q_PROPERTY(tunedeck::OnboardingActions* actions READ actions NOTIFY actionsChanged)
    Q_PROPERTY(tunedeck::OnboardingContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tunedeck::RowModel* tools READ tools CONSTANT)
    Q_PROPERTY(QAbstractItemModel* assistants READ assistants CONSTANT)
public:
    /// Becomes a child of `engine`, where create() finds it.
    OnboardingAdapter(PanelHost& host, QQmlEngine& engine);
    static OnboardingAdapter* create(QQmlEngine* engine, QJSEngine*);

    void setContent(const OnboardingContent& content);
    /// `actions`: null while there is no first-run window.
    void setActions(OnboardingActions* actions);

    [[nodiscard]] OnboardingActions* actions() const { return m_actions; }
    [[nodiscard]] OnboardingContent content() const { return m_content; }
    [[nodiscard]] RowModel* tools() { return &m_tools; }
    [[nodiscard]] QAbstractItemModel* assistants() { return &m_assistants; }

Q_SIGNALS:
    void contentChanged();
    void actionsChanged();

private:
    OnboardingActions* m_actions = nullptr;
    OnboardingContent m_content;
    KeyedModel<ToolRowView> m_tools{&ToolRowView::name};
    KeyedModel<ConnectRowView> m_assistants{&ConnectRowView::id};
};

} // namespace tunedeck
