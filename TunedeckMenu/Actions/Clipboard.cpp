#include "TunedeckMenu/Actions/Clipboard.h"

#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;

void Clipboard::copy(const QString& text, const QString& key) {
    m_services.pasteboard.setText(text);
    m_model.setCopied(key);
    spawn(unmark(key));
}

QCoro::Task<> Clipboard::unmark(QString key) {
    const auto stop = m_scope.token();
    co_await m_services.clock.sleep(1500ms, stop);
    if (!stop.stop_requested() && m_model.state().copied == key) {
        m_model.setCopied({});
    }
}

} // namespace tunedeck
