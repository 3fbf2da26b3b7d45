#include "Tests/Soak/Driver/Ledger.h"

#include <QDirIterator>

#include <algorithm>

namespace tunedeck::soak {

using namespace Qt::StringLiterals;

namespace {

/// A quarter of the values lies below: what is open or unfolded for the moment doesn't count.
double lowerQuartile(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    const auto quarter = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 4);
    std::ranges::nth_element(values, quarter);
    return *quarter;
}

} // namespace

void Ledger::add(double minute, const Figures& figures) {
    m_figures.emplace_back(minute, figures);
}

std::vector<Ledger::Row> Ledger::rows(std::optional<int> scale) const {
    struct Kind {
        QString what;
        double Figures::* member;
        std::optional<double> limit;
    };
    const auto memory = [&](double limit) { return scale ? std::optional(*scale * limit) : std::nullopt; };
    const Kind kinds[] = {{u"memory (PSS), KiB"_s, &Figures::pss, {}},
                          {u"memory of its own, KiB"_s, &Figures::own, memory(2048)},
                          {u"memory in use (malloc), KiB"_s, &Figures::memory, memory(2048)},
                          {u"descriptors"_s, &Figures::files, 0},
                          {u"sockets among them"_s, &Figures::sockets, 0},
                          {u"threads"_s, &Figures::threads, 0},
                          {u"child processes"_s, &Figures::children, 0}};
    const auto count = m_figures.size();
    std::vector<Row> rows;
    for (const auto& kind : kinds) {
        std::vector<double> early;
        std::vector<double> late;
        for (std::size_t i = count / 4; i < count; ++i) {
            const auto value = m_figures[i].second.*kind.member;
            if (i < count / 4 + (count - count / 4) / 3) {
                early.push_back(value);
            } else if (i >= count - (count - count / 4) / 3) {
                late.push_back(value);
            }
        }
        rows.push_back(Row{kind.what, lowerQuartile(early), lowerQuartile(late), kind.limit});
    }
    return rows;
}

QStringList filesBelow(const QStringList& folders) {
    QStringList found;
    for (const auto& folder : folders) {
        QDirIterator files(folder, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            found << files.next();
        }
    }
    found.sort();
    return found;
}

} // namespace tunedeck::soak
