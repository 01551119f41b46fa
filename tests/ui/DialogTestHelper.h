#pragma once

#include "kit/MemoryMaskStore.h"
#include "kit/MemoryOptions.h"
#include "names/FileNameTemplate.h"

#include <QString>
#include <QTemporaryDir>
#include <QWidget>
#include <QtGlobal>
#include <map>
#include <memory>
#include <string>

namespace wordbm::dialogtest {

using wordbm::MemoryMaskStore;
using wordbm::MemoryOptions;

// A template whose own editor is never shown; the tests open frmFileNameTemplate themselves.
struct TemplateFixture {
    TemplateFixture();
    MemoryMaskStore store;
    std::unique_ptr<FileNameTemplate> owner;
};

// Points HOME and XDG_CONFIG_HOME at `home` (with its Documents folder), so that working copies
// and settings of a test never touch the real ones. False when `home` could not be made.
bool useOwnHome(const QTemporaryDir& home);

// Where pictures for review go: $WORDBM_SCREENSHOT_DIR, else the build's screenshot folder; made
// when missing.
QString screenshotFolder();

// The child of `parent` with this objectName and type; null when there is none.
template <typename Widget> Widget* child(QWidget* parent, const char* name) {
    return parent->findChild<Widget*>(QString::fromLatin1(name));
}

// As child(), for controls a test cannot go on without: a missing one ends the test program.
template <typename Widget> Widget* required(QWidget& parent, const char* name) {
    auto* widget = child<Widget>(&parent, name);
    if (!widget) {
        qFatal("control %s missing", name);
    }
    return widget;
}

} // namespace wordbm::dialogtest
