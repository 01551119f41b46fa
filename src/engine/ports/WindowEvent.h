#pragma once

#include <functional>
#include <string>

namespace wordbm {

// The events the main window raises; the engine handles each in its mfWBM_ member of the same
// name. Timer is the window's periodic session check.
enum class WindowEvent {
    Quit,
    Insert, // argument: the field chosen in the field list
    Replace,
    Analyze,
    Reset,
    Merge,
    Test,
    OpenWordDoc, // argument: the new path; empty closes the form
    OpenCSVDoc,  // argument: the new path; empty closes the control file
    WordCopy,
    ESQRgo,
    Verify,
    Timer,
};

using WindowEventHandler = std::function<void(WindowEvent event, const std::string& argument)>;

} // namespace wordbm
