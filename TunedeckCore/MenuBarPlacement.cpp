#include "TunedeckCore/MenuBarPlacement.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Json/Value.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

QString MenuBarIconVisibility::description() const {
    switch (kind) {
    case Kind::hidden:
        return u"hidden: "_s + reason;
    case Kind::visible:
        return u"visible"_s;
    case Kind::unknown:
        break;
    }
    return u"unknown"_s;
}

MenuBarPlacement MenuBarPlacement::measured(const QRectF& item, const QRectF& screen, const QRectF& leftOfNotch,
                                            const QRectF& rightOfNotch) {
    const auto width = [](const QRectF& area) { return area.isEmpty() ? std::nullopt : std::optional(area.width()); };
    return {.itemMinX = item.x() - screen.x(),
            .itemWidth = item.width(),
            .screenWidth = screen.width(),
            .leftAreaWidth = width(leftOfNotch),
            .rightAreaWidth = width(rightOfNotch)};
}

bool MenuBarPlacement::underNotch() const {
    return leftAreaWidth && rightAreaWidth && *leftAreaWidth < itemMinX + itemWidth &&
           itemMinX < screenWidth - *rightAreaWidth;
}

bool MenuBarPlacement::offScreen() const {
    return itemMinX < 0 || itemMinX >= screenWidth;
}

MenuBarIconVisibility MenuBarPlacement::visibility() const {
    if (userHidden) {
        return MenuBarIconVisibility::hidden(u"The Tunedeck icon was removed from the menu bar."_s);
    }
    if (underNotch()) {
        return MenuBarIconVisibility::hidden(
            u"Your menu bar is full, so macOS put the Tunedeck icon behind the notch."_s);
    }
    if (offScreen()) {
        return MenuBarIconVisibility::hidden(u"Your menu bar is full, so macOS hid the Tunedeck icon."_s);
    }
    return MenuBarIconVisibility::visible();
}

std::expected<void, QString> MenuBarPlacement::write(const QString& path, const QDateTime& now) const {
    const auto shown = visibility();
    const auto notch =
        leftAreaWidth ? json::Array{*leftAreaWidth, screenWidth - rightAreaWidth.value_or(0)} : json::Array();
    const json::Object record{
        {u"visible"_s, shown.kind == MenuBarIconVisibility::Kind::visible},
        {u"occluded"_s, occluded},
        {u"status"_s, shown.description()},
        {u"item_x"_s, itemMinX},
        {u"item_width"_s, itemWidth},
        {u"screen_width"_s, screenWidth},
        {u"notch"_s, notch},
        {u"checked_at"_s, isoTimestamp(now)},
    };
    const auto folder = createFolder(QFileInfo(path).path());
    return folder ? writeFileAtomically(path, json::prettyText(record)) : folder;
}

} // namespace tunedeck
