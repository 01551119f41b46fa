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

std::string MemoryOptions::get(const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
}

void MemoryOptions::set(const std::string& key, const std::string& value) {
    values[key] = value;
    ++writes;
}

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
