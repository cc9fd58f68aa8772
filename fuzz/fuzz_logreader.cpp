#include "fuzz/memoryfile.h"
#include "host/hostrecords.h"
#include "las/lasheader.h"
#include "las/logreader.h"
#include "survey/laswellproposal.h"

#include <QSet>

#include <cmath>

namespace {

void checkSets(const las::LogFile &file)
{
    check(file.error.isEmpty() || file.sets.isEmpty(), "a file with an error gives no logs");
    for (const las::LogSet &set : file.sets) {
        check(!set.logs.isEmpty(), "a set has a log");
        check(std::isfinite(set.metresPerUnit) && set.metresPerUnit > 0, "depths have a unit");
        for (const double depth : set.depths)
            check(std::isfinite(depth), "a depth is finite");
        QSet<QString> names;
        for (const las::FileLog &log : set.logs) {
            check(log.values.size() == set.depths.size(), "depths and values are parallel");
            bool hasSample = false;
            for (const float value : log.values) {
                check(std::isfinite(value), "a value is a number or undefined");
                hasSample = hasSample || !host::isUndefined(value);
            }
            check(hasSample, "a log has a sample");
            check(!names.contains(log.name), "a name stands once in a set");
            names.insert(log.name);
        }
        check(std::isfinite(set.deepest()), "a set with a log has a deepest sample");
    }
}

void checkSame(const las::LogFile &a, const las::LogFile &b)
{
    check(a.sets.size() == b.sets.size() && a.notices == b.notices && a.error == b.error, "it is read alike again");
    for (int i = 0; i < a.sets.size(); ++i)
        check(a.sets.at(i).depths == b.sets.at(i).depths && a.sets.at(i).logs.size() == b.sets.at(i).logs.size(),
              "sets are read alike again");
}

void checkProposal(const survey::WellProposal &proposal)
{
    for (const double number : {proposal.x, proposal.y, proposal.kbM, proposal.groundM, proposal.totalDepthM})
        check(std::isfinite(number), "a proposed number is finite");
    for (const auto source : {survey::NameSource::Well, survey::NameSource::Uwi, survey::NameSource::File})
        static_cast<void>(nameFrom(proposal, source) + nameNote(proposal, source));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString &path = fileHolding(data, size);
    const las::LogFile file = las::readLogs(path);
    checkSets(file);
    checkSame(file, las::readLogs(path));
    checkSets(las::readLogs(path, "GB18030"));
    const las::HeaderResult header = las::readHeader(path);
    if (header.error.isEmpty())
        checkProposal(survey::proposeWell(QStringLiteral("/x/file.las"), header.header));
    return 0;
}
