#pragma once

#include <QByteArray>

/// Fuzz targets: each takes any input and aborts if the tested code breaks a promise. Add a new one to CMakeLists.txt
/// and Replay.cpp, with a folder of seeds in corpus/.
namespace tunedeck::fuzz {

void documents(const QByteArray& input);
void httpReply(const QByteArray& input);
void jsonValues(const QByteArray& input);
void mask(const QByteArray& input);
void propertyList(const QByteArray& input);
void zipArchive(const QByteArray& input);

/// Aborts unless the promise holds.
void require(bool promise, const char* what);

} // namespace tunedeck::fuzz
