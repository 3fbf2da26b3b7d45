#pragma once

#include "TunedeckCore/MenuBarPlacement.h"

#include <QObject>
#include <QString>

namespace tunedeck {

/// A card of one text: the hidden-icon card.
struct TextCardView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QString text;
    bool operator==(const TextCardView&) const = default;
};

TextCardView hiddenIconCard(const MenuBarIconVisibility& icon);

} // namespace tunedeck
