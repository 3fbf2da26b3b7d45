#pragma once

#include <QByteArray>

namespace tunedeck {

/// A complete reply with any status.
struct HttpReply {
    int status = 0;
    QByteArray body;
};

} // namespace tunedeck
