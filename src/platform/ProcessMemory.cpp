#include "ProcessMemory.h"

#include <QFile>

#include <algorithm>

#include <malloc.h>
#include <sys/mman.h>

namespace ProcessMemory {

void trimHeap()
{
    malloc_trim(0);
}

void pageOutMappedFiles(const QByteArrayList& pathFragments)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return;
    // Read whole first: advising while reading could change the file under the reader.
    const QByteArrayList lines = maps.readAll().split('\n');
    for (const QByteArray& line : lines) {
        // "start-end perms offset dev inode path"
        const QByteArrayList fields = line.simplified().split(' ');
        if (fields.size() < 6)
            continue;
        const QByteArray& path = fields.at(5);
        const bool wanted = std::any_of(pathFragments.cbegin(), pathFragments.cend(),
                                        [&path](const QByteArray& f) { return path.contains(f); });
        if (!wanted)
            continue;
        const QByteArrayList range = fields.at(0).split('-');
        bool startOk = false;
        bool endOk = false;
        const quintptr start = range.value(0).toULongLong(&startOk, 16);
        const quintptr end = range.value(1).toULongLong(&endOk, 16);
        if (startOk && endOk && end > start)
            ::madvise(reinterpret_cast<void*>(start), end - start, MADV_PAGEOUT);
    }
}

} // namespace ProcessMemory
