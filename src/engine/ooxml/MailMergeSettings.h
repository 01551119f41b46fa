#pragma once

#include <string>

namespace wordbm::ooxml {

class Package;

// The mail-merge settings of a document (w:mailMerge in the settings part).
class MailMergeSettings {
public:
    // WdMailMergeMainDocType: -1 not a merge document, 0 form letters, 1 labels, 2 envelopes,
    // 3 catalog, 4 e-mail, 5 fax.
    static int mainDocumentType(Package& package);
    // -1 removes w:mailMerge and every relationship it refers to (data source, header source...).
    // Another type is written into existing settings; a document without them cannot become a merge
    // document here (throws AutomationError). Returns true when anything changed.
    static bool setMainDocumentType(Package& package, int type);

private:
    static std::string settingsPart(Package& package);
};

} // namespace wordbm::ooxml
