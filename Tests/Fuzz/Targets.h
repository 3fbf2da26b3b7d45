#pragma once

#include <QByteArray>

/// What the fuzzer throws bytes at: each function takes any input, and ends the program when a promise of the code
/// under it is broken. A new one gets its name in CMakeLists.txt and Replay.cpp, and a folder of seeds in corpus/.
namespace tunedeck::fuzz {

void base64(const QByteArray& input);
void documents(const QByteArray& input);
void jsonValues(const QByteArray& input);
void mask(const QByteArray& input);
void propertyList(const QByteArray& input);
void semVer(const QByteArray& input);
void timestamp(const QByteArray& input);
void tunnelConfig(const QByteArray& input);
void updateFeed(const QByteArray& input);
void zipArchive(const QByteArray& input);

/// Ends the program unless the promise holds.
void require(bool promise, const char* what);

} // namespace tunedeck::fuzz
