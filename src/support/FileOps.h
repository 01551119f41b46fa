#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// File helpers used at the program's file boundary. Paths are native (see nativePath).
namespace wordbm {

// The whole file as bytes; nullopt when it cannot be opened or read.
std::optional<std::string> readFileBytes(const std::string& path);

// The whole file taken as ANSI (cp1252) text and returned as UTF-8; a byte-order mark is not
// interpreted. nullopt when it cannot be read.
std::optional<std::string> readAnsiText(const std::string& path);

// Writes the bytes to a temporary file in the target's folder, flushes it and renames it over
// the target, so the target is either the old or the new file. Returns an error text, empty on success.
std::string writeFileAtomic(const std::string& path, std::string_view bytes);

// UTF-8 text written as cp1252, atomically.
std::string writeAnsiTextAtomic(const std::string& path, std::string_view text);

// Copies source over target. Error text (lines joined by CR LF): "Kann Datei nicht kopieren!",
// source, "nach", target, then the system's description; empty on success.
std::string FileCopy(const std::string& source, const std::string& target);

// "Datei nicht gefunden!" CR LF path, or "Kann Datei nicht öffnen!" CR LF path CR LF description;
// empty when the file can be opened for reading.
std::string FileOpenCheck(const std::string& path);

// Flushes what was written to the file system that holds `folder` to disk, such as files committed
// without a flush of their own; the error when that fails.
std::error_code flushFolder(const std::string& folder);

bool fileExists(const std::string& path);
bool folderExists(const std::string& path);

} // namespace wordbm
