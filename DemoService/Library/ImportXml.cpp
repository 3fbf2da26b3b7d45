#include "DemoService/Library/ImportXml.h"

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
    QString nodes;
    for (const QString& playlist : playlists) {
        nodes += uR"(      <NODE Type="1" Name="%1" KeyType="0" Entries="0"/>)"_s.arg(playlist.toHtmlEscaped()) + u'\n';
    }
    return uR"(<?xml version="1.0" encoding="UTF-8"?>
<DJ_PLAYLISTS Version="1.0.0">
  <PRODUCT Name="Tunedeck" Version="%1"/>
  <COLLECTION Entries="0"/>
  <PLAYLISTS>
    <NODE Type="0" Name="ROOT" Count="%2">
%3    </NODE>
  </PLAYLISTS>
</DJ_PLAYLISTS>
)"_s.arg(version.toHtmlEscaped(), QString::number(playlists.size()), nodes)
        .toUtf8();
}

} // namespace tunedeck::demo
