#include "fuzz/fuzzcheck.h"
#include "survey/objectlist.h"

using survey::ObjectEntry;
using survey::ObjectList;

namespace {

// Of several carriage returns at the end of a line each writing takes one, and a null becomes a blank.
bool isOdd = false;

// The date differs from run to run.
QByteArray withoutDate(const QByteArray &bytes)
{
    int at = 0;
    for (int line = 0; line < 3; ++line)
        at = bytes.indexOf('\n', at) + 1;
    return bytes.mid(at);
}

void checkSame(const ObjectEntry &a, const ObjectEntry &b)
{
    check(a.name == b.name && a.number == b.number && a.isFolder == b.isFolder, "an entry stays the same");
    check(isOdd || (a.keys.toBytes() == b.keys.toBytes() && a.firstLine == b.firstLine), "its lines stay the same");
}

ObjectList readBack(const ObjectList &list)
{
    const host::Outcome<ObjectList> again = ObjectList::parse(list.toBytes());
    check(again.ok() && !again.value.isCut(), "a written list can be read");
    check(again.value.entries().size() == list.entries().size(), "a written list has as many entries");
    check(isOdd || withoutDate(again.value.toBytes()) == withoutDate(list.toBytes()),
          "a written list stays the same");
    return again.value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    isOdd = bytes.contains('\r') || bytes.contains('\0');
    QStringList problems;
    const host::Outcome<ObjectList> read = ObjectList::parse(bytes, &problems);
    if (!read.ok() || read.value.isCut())
        return 0;
    const ObjectList again = readBack(read.value);
    for (int i = 0; i < again.entries().size(); ++i)
        checkSame(again.entries().at(i), read.value.entries().at(i));

    ObjectList list = read.value;
    const int number = list.append(QStringLiteral("New: 1"), "Well", QStringLiteral("new.well"));
    if (number == 0)
        return 0; // none is left
    check(!read.value.entry(number), "a new entry has a number of its own");
    const ObjectList added = readBack(list);
    check(added.entry(number) && added.entry(number)->name == QLatin1String("New: 1"), "a new entry reads back");
    for (int i = 0; i < read.value.entries().size(); ++i)
        checkSame(added.entries().at(i), read.value.entries().at(i));
    check(list.rename(number, QStringLiteral("Other"))
              && readBack(list).entry(number)->name == QLatin1String("Other"),
          "a new name reads back");
    check(list.remove(number) && !readBack(list).entry(number), "a removed entry is gone");
    return 0;
}
