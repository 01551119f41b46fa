#pragma once

namespace wordbm {

// The numbers of the last analysis, for the main window's count display.
struct DocumentCounts {
    int exportFields = 0;
    int bookmarksTotal = 0;
    int bookmarksKnown = 0;
    int mergeFieldsTotal = 0;
    int mergeFieldsKnown = 0;
};

} // namespace wordbm
