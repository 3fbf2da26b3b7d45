#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"

namespace tunedeck {

OnboardingAdapter::OnboardingAdapter(QQmlEngine& engine) : QObject(&engine) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

OnboardingAdapter* OnboardingAdapter::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<OnboardingAdapter*>(QString(), Qt::FindDirectChildrenOnly);
}

void OnboardingAdapter::setContent(const OnboardingContent& content) {
    m_tools.assign(content.tools);
    m_assistants.assign(content.assistants);
    if (m_content != content) {
        m_content = content;
        Q_EMIT contentChanged();
    }
}

void OnboardingAdapter::setActions(OnboardingActions* actions) {
    m_actions = actions;
    Q_EMIT actionsChanged();
}

} // namespace tunedeck
