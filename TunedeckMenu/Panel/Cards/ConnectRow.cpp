#include "TunedeckMenu/Panel/Cards/ConnectRow.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

ConnectRowView connectRow(Assistant assistant, const QString& symbol, bool busy) {
    const AssistantInfo& known = info(assistant);
    const QString help = u"Connect %1 (%2)"_s.arg(known.name, known.cost.toLower());
    const QString plan = known.cost == u"Free" ? QString() : known.cost;
    return {
        .id = known.rawValue,
        .name = known.name,
        .plan = plan,
        .accessibleName = plan.isEmpty() ? known.name : known.name + u", "_s + plan,
        .help = busy ? help + u". Another link is being changed."_s : help,
        .symbol = symbol,
    };
}

} // namespace tunedeck
