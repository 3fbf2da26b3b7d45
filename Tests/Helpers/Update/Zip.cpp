#include "Tests/Helpers/Update/Zip.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

QByteArray infoPlist(const QByteArray& version, const QByteArray& identifier) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict><key>CFBundleIdentifier</key><string>)" +
           identifier + "</string><key>CFBundleShortVersionString</key><string>" + version +
           "</string><key>CFBundleExecutable</key><string>Tunedeck</string></dict></plist>";
}

la_ssize_t append(archive*, void* context, const void* bytes, std::size_t size) {
    static_cast<QByteArray*>(context)->append(static_cast<const char*>(bytes), static_cast<qsizetype>(size));
    return static_cast<la_ssize_t>(size);
}

} // namespace

QByteArray zip(const std::vector<ZipEntry>& entries, ZipStyle style) {
    QByteArray result;
    archive* writer = archive_write_new();
    archive_write_set_format_zip(writer);
    archive_write_set_bytes_in_last_block(writer, 1);
    if (style.stored) {
        archive_write_zip_set_compression_store(writer);
    }
    if (style.encrypted) {
        archive_write_set_options(writer, "zip:encryption=zipcrypt");
        archive_write_set_passphrase(writer, "secret");
    }
    archive_write_open(writer, &result, nullptr, append, nullptr);
    for (const ZipEntry& entry : entries) {
        archive_entry* header = archive_entry_new();
        archive_entry_copy_pathname(header, entry.name.constData());
        archive_entry_set_mode(header, entry.mode);
        if (!entry.linkTarget.isEmpty()) {
            archive_entry_copy_symlink(header, entry.linkTarget.constData());
        } else {
            archive_entry_set_size(header, entry.contents.size());
        }
        archive_write_header(writer, header);
        archive_write_data(writer, entry.contents.constData(), static_cast<std::size_t>(entry.contents.size()));
        archive_entry_free(header);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    return result;
}

std::vector<ZipEntry> appEntries(const QByteArray& version, const QByteArray& identifier, const QByteArray& program) {
    return {
        {.name = "Tunedeck.app/", .mode = 040755},
        {.name = "Tunedeck.app/Contents/Info.plist", .contents = infoPlist(version, identifier)},
        {.name = "Tunedeck.app/Contents/MacOS/Tunedeck", .contents = versionScript(version, program), .mode = 0100755},
        {.name = "Tunedeck.app/Contents/Current", .mode = 0120777, .linkTarget = "MacOS/Tunedeck"},
    };
}

QByteArray versionScript(const QByteArray& version, const QByteArray& text) {
    return "#!/bin/sh\necho Tunedeck " + version + "\nexit\n" + text;
}

void writeApp(const QString& path, const QByteArray& version, const QByteArray& identifier, const QByteArray& program) {
    for (const ZipEntry& entry : appEntries(version, identifier, program)) {
        QFile file(path + QString::fromUtf8(entry.name).mid(u"Tunedeck.app"_s.size()));
        if (!entry.contents.isEmpty() && QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly)) {
            file.write(entry.contents);
        }
    }
}

} // namespace tunedeck::test
