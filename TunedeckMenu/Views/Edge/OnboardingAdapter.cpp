#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"

namespace tunedeck {

OnboardingModel::OnboardingModel(PanelHost& host, QQmlEngine& engine) : QObject(&engine), m_host(host) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_tools, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_assistants, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_fields, QJSEngine::CppOwnership);
}

OnboardingModel* OnboardingModel::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<OnboardingModel*>(QString(), Qt::FindDirectChildrenOnly);
}

void OnboardingModel::take(const OnboardingContent& content) {
    m_tools.assign(content.tools);
    m_assistants.assign(content.assistants);
    m_fields.assign(content.fields);
    if (m_content != content) {
        m_content = content;
        Q_EMIT contentChanged();
    }
}

} // namespace tunedeck
