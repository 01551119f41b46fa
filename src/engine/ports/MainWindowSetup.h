#pragma once

#include <string>
#include <vector>

namespace wordbm {

// What the main window shows when the engine starts it.
struct MainWindowSetup {
    std::string Template;
    std::string CSVDoc;
    std::string WordDoc;
    bool mergePage = false;
    // The field list for bookmark insertion; "-" entries separate its groups.
    std::vector<std::string> fields;
};

} // namespace wordbm
