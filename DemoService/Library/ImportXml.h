#pragma once

#include "DemoService/World/Jobs.h"

#include <QByteArray>
#include <QString>

namespace tunedeck::demo {

/// An XML file that Rekordbox can import, with each playlist that a finished job added to.
QByteArray importXml(const Jobs& jobs, const QString& version);

} // namespace tunedeck::demo
