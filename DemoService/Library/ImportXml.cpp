#include "DemoService/Library/ImportXml.h"

#include <QXmlStreamWriter>

#include <initializer_list>
#include <set>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

QByteArray importXml(const Jobs& jobs, const QString& version) {
    std::set<QString> playlists;
    for (const Job& job : jobs.recent) {
        if (job.state == job_state::done) {
            playlists.insert(job.playlist);
        }
    }
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    const auto start = [&](const QString& name, std::initializer_list<QXmlStreamAttribute> attributes) {
        xml.writeStartElement(name);
        for (const auto& attribute : attributes) {
            xml.writeAttribute(attribute);
        }
    };
    xml.writeStartDocument();
    start(u"DJ_PLAYLISTS"_s, {{u"Version"_s, u"1.0.0"_s}});
    start(u"PRODUCT"_s, {{u"Name"_s, u"Tunedeck"_s}, {u"Version"_s, version}});
    xml.writeEndElement();
    start(u"COLLECTION"_s, {{u"Entries"_s, u"0"_s}});
    xml.writeEndElement();
    start(u"PLAYLISTS"_s, {});
    start(u"NODE"_s, {{u"Type"_s, u"0"_s}, {u"Name"_s, u"ROOT"_s}, {u"Count"_s, QString::number(playlists.size())}});
    for (const QString& playlist : playlists) {
        start(u"NODE"_s, {{u"Type"_s, u"1"_s}, {u"Name"_s, playlist}, {u"KeyType"_s, u"0"_s}, {u"Entries"_s, u"0"_s}});
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return text;
}

} // namespace tunedeck::demo
