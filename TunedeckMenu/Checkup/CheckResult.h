#pragma once

#include <QString>

#include <utility>

namespace tunedeck {

/// What one check found, in words for the user.
struct CheckResult {
    enum class Level { Ok, Warning, Problem };

    Level level = Level::Ok;
    QString sentence;
    QString advice = {};  ///< what to do; may be empty
    QString details = {}; ///< for support; may be empty
    QString name = {};    ///< of the check; set by runChecks()

    static CheckResult ok(QString sentence) { return {.level = Level::Ok, .sentence = std::move(sentence)}; }
    static CheckResult warning(QString sentence, QString advice = {}) {
        return {.level = Level::Warning, .sentence = std::move(sentence), .advice = std::move(advice)};
    }
    static CheckResult problem(QString sentence, QString advice) {
        return {.level = Level::Problem, .sentence = std::move(sentence), .advice = std::move(advice)};
    }
    bool operator==(const CheckResult&) const = default;
};

} // namespace tunedeck
