#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace tunedeck {

/// The service's report on its download tools.
struct ToolboxReport {
    /// A tool or tool environment.
    struct Tool {
        QString name;
        std::optional<QString> installed; ///< a version, or a requirement such as "spotdl==4.2"
        QString wanted;
        bool ready = false;

        /// The installed version, without the "name==" of a requirement.
        [[nodiscard]] std::optional<QString> displayVersion() const;
        bool operator==(const Tool&) const = default;

        static constexpr auto members = json::members<&Tool::name, &Tool::installed, &Tool::wanted, &Tool::ready>;
    };

    std::vector<Tool> tools;
    std::vector<Tool> venvs;
    bool installing = false;
    std::optional<QString> step;
    std::optional<double> progress;
    std::optional<QString> error;
    std::optional<QString> manifest;
    std::optional<QString> checkedAt;

    /// The tools, then the environments.
    [[nodiscard]] std::vector<Tool> all() const;
    [[nodiscard]] bool allReady() const;

    static std::expected<ToolboxReport, json::Error> decode(const QByteArray& bytes);
    bool operator==(const ToolboxReport&) const = default;

    static constexpr auto members =
        json::members<&ToolboxReport::tools, &ToolboxReport::venvs, &ToolboxReport::installing, &ToolboxReport::step,
                      &ToolboxReport::progress, &ToolboxReport::error, &ToolboxReport::manifest,
                      &ToolboxReport::checkedAt>;
};

} // namespace tunedeck
