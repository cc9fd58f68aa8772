#include "odsurvey.h"

#include "odprogram.h"
#include "support/files.h"
#include "survey/surveyfolder.h"

#include <ctxtioobj.h>
#include <iodir.h>
#include <iodirentry.h>
#include <ioman.h>
#include <ioobj.h>
#include <ptrman.h>
#include <welldata.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellman.h>
#include <wellmarker.h>
#include <wellreader.h>
#include <welltrack.h>
#include <welltransl.h>
#include <wellwriter.h>

namespace odsurvey {

namespace {

void require(bool isDone, const char *what)
{
    if (!isDone)
        qFatal("The host's library cannot %s", what);
}

void fill(::Well::Data &data, const Well &well)
{
    data.info().surfacecoord = Coord(well.header.x, well.header.y);
    data.info().groundelev = well.header.groundElevation;
    for (const survey::TrackPoint &point : well.track)
        data.track().addPoint(Coord3(point.x, point.y, point.z), static_cast<float>(point.md));
    for (const host::Marker &marker : well.markers) {
        const QColor color = marker.color;
        data.markers().insertNew(new ::Well::Marker(marker.name.toUtf8().constData(), marker.depth,
                                                    Color(static_cast<unsigned char>(color.red()),
                                                          static_cast<unsigned char>(color.green()),
                                                          static_cast<unsigned char>(color.blue()))));
    }
}

void writeLogs(const ::Well::Writer &writer, const Well &well)
{
    for (const host::LogData &log : well.logs) {
        ::Well::Log made(log.name.toUtf8().constData());
        made.setUnitMeasLabel(log.unit.toUtf8().constData());
        for (int i = 0; i < log.depths.size(); ++i)
            made.addValue(log.depths.at(i), log.values.at(i));
        require(writer.putLog(made), "write a log");
    }
}

Well read(const IOObj &stored)
{
    RefMan<::Well::Data> data = ::Well::MGR().get(stored.key());
    require(data, "read a well");
    Well well;
    well.header.name = QString::fromUtf8(stored.name().buf());
    well.header.x = data->info().surfacecoord.x;
    well.header.y = data->info().surfacecoord.y;
    well.header.kbElevation = data->track().getKbElev();
    well.header.groundElevation = data->info().groundelev;
    well.header.totalDepth = static_cast<double>(data->track().td());
    for (int i = 0; i < data->track().size(); ++i) {
        const Coord3 &point = data->track().pos(i);
        well.track.append({point.x, point.y, point.z, static_cast<double>(data->track().dah(i))});
    }
    for (int i = 0; i < data->logs().size(); ++i) {
        const ::Well::Log &log = data->logs().getLog(i);
        host::LogData made{QString::fromUtf8(log.name().buf()), QString::fromUtf8(log.unitMeasLabel()), {}, {}};
        for (int j = 0; j < log.size(); ++j) {
            made.depths.append(log.dah(j));
            made.values.append(log.value(j));
        }
        well.logs.append(made);
    }
    for (int i = 0; i < data->markers().size(); ++i) {
        const ::Well::Marker &marker = *data->markers()[i];
        const Color color = marker.color();
        well.markers.append(
            {QString::fromUtf8(marker.name().buf()), marker.dah(), QColor(color.r(), color.g(), color.b())});
    }
    return well;
}

} // namespace

QString open(const QString &name, survey::DepthUnit unit)
{
    const QString path = OdProgram::dataRoot() + QLatin1Char('/') + name;
    const host::Status made = survey::createSurvey(path, {});
    if (!made.ok())
        qFatal("The test cannot make a survey: %s", qUtf8Printable(made.error));
    if (unit == survey::DepthUnit::Foot) {
        const QByteArray info = files::read(path + QStringLiteral("/.survey"));
        files::write(path + QStringLiteral("/.survey"), QByteArray(info).replace("`D\n", "`F\n"));
    }
    makeCurrent(name);
    return path;
}

void makeCurrent(const QString &name)
{
    ::Well::MGR().cleanup(); // as the host's window does
    require(IOM().setDataSource(OdProgram::dataRoot().toUtf8().constData(), name.toUtf8().constData()).isOK(),
            "open the survey");
}

QString add(const Well &well)
{
    PtrMan<CtxtIOObj> context = mMkCtxtIOObj(Well);
    context->setName(well.header.name.toUtf8().constData());
    IOM().getNewEntry(*context);
    require(context->ioobj_, "make an entry for a well");
    const MultiID key = context->ioobj_->key();
    require(IOM().commitChanges(*context->ioobj_), "list the well");
    context->setObj(nullptr);

    RefMan<::Well::Data> data = new ::Well::Data(well.header.name.toUtf8().constData());
    fill(*data, well);
    const ::Well::Writer writer(key, *data);
    require(writer.putInfoAndTrack(), "write a well");
    require(writer.putMarkers(), "write markers");
    writeLogs(writer, well);
    return QString::fromUtf8(key.buf());
}

QVector<Well> readAll()
{
    const IOObjContext context = WellTranslatorGroup::ioContext();
    const IODir folder(context.getSelKey());
    const IODirEntryList entries(folder, context);
    QVector<Well> wells;
    for (int i = 0; i < entries.size(); ++i)
        wells.append(read(*entries[i]->ioobj_));
    ::Well::MGR().cleanup();
    return wells;
}

void remove(const QString &key)
{
    require(IOM().implRemove(MultiID(key.toLatin1().constData()), true), "remove a well");
}

} // namespace odsurvey
