#pragma once

class QDropEvent;

namespace wordbm {

// Files dragged in from a file manager are always taken as a copy. A file manager that is told
// the drop was a move deletes the file on its side, and these are the person's forms and control
// files: a source that offers no copy is refused instead.
class FileDrop {
public:
    // Accepts a drag or drop carrying files as a copy; ignores any other. True when accepted.
    static bool acceptCopy(QDropEvent* event);
};

} // namespace wordbm
