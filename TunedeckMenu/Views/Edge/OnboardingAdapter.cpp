#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"

namespace tunedeck {

OnboardingAdapter::OnboardingAdapter(PanelHost& host, QQmlEngine& engine) : QObject(&engine) {
    m_tools.onRequest = [&host](RowRange range) { host.showRows(&RowRanges::tools, range); };
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

OnboardingAdapter* OnboardingAdapter::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<OnboardingAdapter*>(QString(), Qt::FindDirectChildrenOnly);
}

void OnboardingAdapter::setContent(const OnboardingContent& content) {
    m_tools.assignSlice(content.tools);
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
