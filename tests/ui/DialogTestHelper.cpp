#include "DialogTestHelper.h"

#include <QDir>

namespace wordbm::dialogtest {

namespace {

class UnusedEditor : public FileNameTemplateEditor {
public:
    std::optional<std::string> Show(const FileNameTemplate&, const std::string&) override {
        return std::nullopt;
    }
};

} // namespace

TemplateFixture::TemplateFixture()
    : owner(std::make_unique<FileNameTemplate>(store, std::make_unique<UnusedEditor>())) {}

bool useOwnHome(const QTemporaryDir& home) {
    if (!home.isValid()) {
        return false;
    }
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral(".config")).toLocal8Bit());
    return QDir(home.path()).mkpath(QStringLiteral("Documents"));
}

QString screenshotFolder() {
    const QByteArray fromEnvironment = qgetenv("WORDBM_SCREENSHOT_DIR");
    const QString folder = fromEnvironment.isEmpty() ? QStringLiteral(WORDBM_SCREENSHOT_DIR)
                                                     : QString::fromLocal8Bit(fromEnvironment);
    QDir().mkpath(folder);
    return folder;
}

} // namespace wordbm::dialogtest
