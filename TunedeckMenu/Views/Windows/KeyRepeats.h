#pragma once

#include <QKeyEvent>
#include <QObject>

namespace tunedeck {

/// Marks the repeats of a held key in all windows of the application. An X server repeats a key with a release and a
/// press at the same time, which Qt 6.4 recognises only if both have arrived when it handles the first.
class KeyRepeats : public QObject {
public:
    /// Needs the application object.
    KeyRepeats();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    quint64 m_released = 0; ///< in milliseconds; 0 before the first release
    int m_key = 0;          ///< the key that was released last
};

} // namespace tunedeck
