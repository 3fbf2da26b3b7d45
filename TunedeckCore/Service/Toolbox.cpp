#include "TunedeckCore/Service/Toolbox.h"

#include "TunedeckCore/Support/Json/Record.h"

#include <QStringList>

#include <algorithm>

namespace tunedeck {

using namespace Qt::StringLiterals;

using Tool = ToolboxReport::Tool;

std::optional<QString> ToolboxReport::Tool::displayVersion() const {
    if (!installed) {
        return {};
    }
    return installed->split(u"=="_s).last();
}

std::vector<Tool> ToolboxReport::all() const {
    std::vector<Tool> both = tools;
    both.insert(both.end(), venvs.begin(), venvs.end());
    return both;
}

bool ToolboxReport::allReady() const {
    return std::ranges::all_of(tools, &Tool::ready) && std::ranges::all_of(venvs, &Tool::ready);
}

std::expected<ToolboxReport, json::Error> ToolboxReport::decode(const QByteArray& bytes) {
    return json::decode<ToolboxReport>(bytes, json::Keys::SnakeToCamel);
}

} // namespace tunedeck
