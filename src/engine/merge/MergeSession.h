#pragma once

#include "engine/ports/ResultList.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <functional>
#include <string>

namespace wordbm {

class CSVfile;
class FileNameTemplate;
class KnownFields;
class QRCoder;
class QRImage;
class SlipPort;
class UserInterface;

// What a merge run reads of the engine's session and hands back to it: the open form and control
// file with their working copies, the companions that fill an invoice, the engine's own checks and
// its message box. The engine implements it; the run sees nothing else of it.
class MergeSession {
public:
    virtual ~MergeSession() = default;

    virtual UserInterface& UI() = 0;
    virtual KnownFields& Fields() = 0;
    virtual CSVfile& CSV() = 0;
    virtual QRCoder& Coder() = 0;
    virtual QRImage& QRComponent() = 0;
    virtual FileNameTemplate& NameTemplate() = 0;
    virtual SlipPort* SlipBuilder() const = 0;

    virtual const word::ApplicationPtr& Word() const = 0;
    virtual const word::DocumentPtr& Doc() const = 0;
    // The same document for the invoice maker, which opens the form afresh into it after an invoice.
    virtual word::DocumentPtr& OpenDoc() = 0;
    virtual const std::string& WordDoc() const = 0;
    virtual const std::string& CSVDoc() const = 0;
    virtual const std::string& WordWork() const = 0;
    virtual const std::string& CSVWork() const = 0;
    // Each worker thread starts a word processor of its own through it.
    virtual const std::function<word::ApplicationPtr()>& WordFactory() const = 0;
    virtual int MergeJobs() const = 0;

    // Shows why an invoice failed in the engine's message box.
    virtual void ShowFailure(const std::string& text) = 0;
    virtual bool CheckDoc(bool showMessage) = 0;
    virtual bool InvoiceRow(std::int32_t row) = 0;
    virtual bool DocFolderCheck(const std::string& docPath) = 0;
    virtual bool mfWBM_Quit(bool force) = 0;
    // Keeps what the result list showed, for the engine's MergeResult().
    virtual void MergeResult(const ResultList& result) = 0;

protected:
    MergeSession() = default;
    MergeSession(const MergeSession&) = default;
    MergeSession& operator=(const MergeSession&) = default;
};

} // namespace wordbm
