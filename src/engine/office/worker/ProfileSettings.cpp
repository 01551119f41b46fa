#include "ProfileSettings.h"

#include <filesystem>
#include <fstream>

namespace wordbm::office {

namespace {

const char* const Settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="UseLocking" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="UseDocumentOOoLockFile" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="UseDocumentSystemFileLocking" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
</oor:items>
)";

} // namespace

bool writeProfileSettings(const std::string& folder) {
    const std::filesystem::path user = std::filesystem::path(folder) / "user";
    std::error_code error;
    std::filesystem::create_directories(user, error);
    std::ofstream out(user / "registrymodifications.xcu", std::ios::binary);
    out << Settings;
    return !error && static_cast<bool>(out.flush());
}

} // namespace wordbm::office
