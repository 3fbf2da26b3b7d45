#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {
using namespace Qt::StringLiterals; // for the labels that never change
}

/// Declares a data member of a gadget together with the property through which QML reads it. `type` is qualified fully,
/// since moc records its text.
#define VIEW_PROPERTY(type, name)                                                                                      \
    Q_PROPERTY(type name MEMBER name)                                                                                  \
public:                                                                                                                \
    type name
