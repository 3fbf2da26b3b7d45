#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace tunedeck {

/// The members of a list of jobs in a status document.
inline QByteArray statusJobs(int count) {
    QByteArrayList jobs;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        jobs += R"({"job_id":"job-)" + number + R"(","state":"done","playlist":"Friday Night )" + number +
                R"(","message":"12 tracks added — fertig","created_at":"2025-03-01T18:04:05Z",)" +
                R"("finished_at":"2025-03-01T18:06:07Z","links":1,"tracks":12,"errors":0,"xml_version":"7"})";
    }
    return jobs.join(',');
}

} // namespace tunedeck
