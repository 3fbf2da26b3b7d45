#pragma once

#include <QString>
#include <QStringView>

namespace tunedeck::demo {

/// Writes lines to standard error, each with a single write(), so that threads may share it.
class Log {
public:
    enum class Level { Debug, Info, Warn, Error };

    struct Line {
        Level level;
        QString target; ///< the part of the service, as in "tunedeck::jobs"
        QString message;
    };

    /// Lines below `minimum` are dropped.
    explicit Log(Level minimum) : m_minimum(minimum) {}

    /// The level in a filter such as "tunedeck=info" or "debug" (the variable RUST_LOG); Info by default.
    static Level levelFor(QStringView filter);

    void write(const Line& line) const;

private:
    Level m_minimum;
};

} // namespace tunedeck::demo
