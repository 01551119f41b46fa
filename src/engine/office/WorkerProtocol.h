#pragma once

#include <string_view>

// The line protocol between the converter and wordbm-office-worker, over the worker's stdin and
// stdout (one socket). Every message is one line ending in "\n"; documents travel as file URLs,
// which are percent-encoded and so never hold a blank or a line break.
//
//   worker, once started:  READY                      or  FAILED <reason>
//   client:                PDF <source URL> <target URL>   or  PDFA <source URL> <target URL>
//   worker:                OK                         or  ERROR <kind> <detail>
//
// End of input ends the worker. Tried by hand:
//   printf 'PDF file:///tmp/a.docx file:///tmp/a.pdf\n' | wordbm-office-worker --profile /tmp/p
namespace wordbm::office::protocol {

inline constexpr std::string_view Ready = "READY";
inline constexpr std::string_view Failed = "FAILED";
inline constexpr std::string_view Pdf = "PDF";
inline constexpr std::string_view PdfA = "PDFA";
inline constexpr std::string_view Ok = "OK";
inline constexpr std::string_view Error = "ERROR";

// Kinds of ERROR, so that the client can word the message for the user.
inline constexpr std::string_view LoadFailed = "load"; // LibreOffice cannot open the document
inline constexpr std::string_view NotText = "type";    // opened, but not as a text document
inline constexpr std::string_view SaveFailed = "save"; // the PDF cannot be written
inline constexpr std::string_view BadRequest = "request";

// The worker's own LibreOffice profile folder, which it presets and then hands to the office.
inline constexpr std::string_view ProfileOption = "--profile";

} // namespace wordbm::office::protocol
