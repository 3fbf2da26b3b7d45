#include "TunedeckMenu/Actions/FieldCopier.h"

#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;

void FieldCopier::copy(const QString& text, const QString& key) {
    m_services.pasteboard.setSecret(text);
    m_feedback.setCopied(key);
    m_scope.restart(); // an earlier copy must not clear this mark
    spawn(clearMark());
}

QCoro::Task<> FieldCopier::clearMark() {
    const auto stop = m_scope.token();
    co_await m_services.clock.sleep(1500ms, stop);
    if (!stop.stop_requested()) {
        m_feedback.setCopied({});
    }
}

} // namespace tunedeck
