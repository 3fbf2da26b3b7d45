#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>

#include <sys/types.h>

namespace tunedeck {

/// A non-blocking stream socket that child processes don't inherit; invalid on failure.
FileDescriptor streamSocket(int family);

/// send(2) on such a socket. To send to a peer that has closed the connection is an error, and no signal.
ssize_t sendBytes(int socket, const QByteArray& bytes);

} // namespace tunedeck
