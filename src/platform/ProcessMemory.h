#pragma once

#include <QByteArrayList>

// Gives memory that a part of Obrinta no longer uses back to the system.
namespace ProcessMemory {

// Returns the free parts of the heap.
void trimHeap();
// Asks the kernel to reclaim the resident pages of the mapped files whose path contains one of
// `pathFragments` (e.g. the QML libraries once no window is left). Pages come back from the
// file on their next use; nothing is lost.
void pageOutMappedFiles(const QByteArrayList& pathFragments);

} // namespace ProcessMemory
