#pragma once

#include "names/FileNameTemplateEditor.h"
#include "names/MaskStore.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wordbm {

class CSVfile;

// The mask that names every invoice a merge run saves, e.g. "&W&\&K&-&D&-&R&-Rechnung.&E&": eight
// &X& tags and eight %VARIABLE%s, replaced one after another (so a value holding a later tag has
// that tag replaced too; tags match with their letter case).
//
// Separators: a mask and a DocName result keep their backslashes as written. WordPath and CSVPath
// may be native "/" paths or Windows-style "\" paths, so their folder part ends at the last of
// either, and &E& comes from the file name alone. nativeDocPath turns a DocName result into the
// path to use on disk.
//
// Safety: a value taken from the control file or the environment (&K&, &G&, %VARIABLE%) never adds
// a folder level: "/" and "\" inside it become "_", so a client name cannot steer the invoice
// into another folder. &W& and &C& are the user's own folders and keep their separators; &R&, &L&
// and &D& are digits.
//
// Data: DocName(line) reads CSVPath anew on every call, so it always sees the file as it is on
// disk. A merge over thousands of rows passes its already-read file to DocName(line, data)
// instead of re-reading it per row. Either way an empty CSVPath means the test values.
class FileNameTemplate {
public:
    // The store must outlive the template; the editor belongs to it until Tini.
    FileNameTemplate(MaskStore& store, std::unique_ptr<FileNameTemplateEditor> editor);
    FileNameTemplate(const FileNameTemplate&) = delete;
    FileNameTemplate& operator=(const FileNameTemplate&) = delete;

    const std::string& WordPath() const { return wordPath_; }
    void WordPath(std::string path) { wordPath_ = std::move(path); }
    const std::string& CSVPath() const { return csvPath_; }
    void CSVPath(std::string path) { csvPath_ = std::move(path); }

    // The pick lists of the editor. Positions are 1-based; others throw InvalidArgumentError.
    static std::int32_t TagsCount();
    static std::string TagsName(std::int32_t position);  // "Pfad der Seriendruck-Worddatei"
    static std::string TagsValue(std::int32_t position); // "&W&"
    static std::int32_t EnvVarCount();
    static std::string EnvVarName(std::int32_t position);  // "%TEMP%"
    static std::string EnvVarValue(std::int32_t position); // as the environment holds it now
    // Every variable a mask replaces, the table's eight first: its name between "%" signs, its
    // value now, and, where the variable itself is unset, the Linux variable its value is read
    // from ("$HOME", "$TMPDIR oder /tmp"; empty when it is set or has no counterpart).
    struct EnvironmentEntry {
        std::string name;
        std::string value;
        std::string origin;
    };
    static std::vector<EnvironmentEntry> EnvironmentEntries();
    static std::int32_t DefaultsCount();
    static std::string DefaultsName(std::int32_t position);
    static std::string DefaultsValue(std::int32_t position);

    const std::string& Template() const { return mask_; }
    // "" loads the stored mask, or the first standard mask when none is stored. Not stored here.
    void Template(const std::string& mask);

    // Lets the user edit the mask (after setting it to `mask` when given). Always false: callers
    // read the outcome from Template. After Tini there is no editor and the mask stays.
    bool Edit(const std::optional<std::string>& mask = std::nullopt);

    // Whether the folder of DocName(line) exists on disk.
    bool IsValid(std::int32_t line) const;
    bool IsValid(std::int32_t line, CSVfile& data) const;

    // The mask resolved for data line `line` (1-based) of the control file.
    std::string DocName(std::int32_t line) const;
    std::string DocName(std::int32_t line, CSVfile& data) const;
    // What `mask` would give for that line, without making it the template's mask: the editor's
    // example while the user types.
    std::string DocName(std::int32_t line, CSVfile& data, const std::string& mask) const;

    // Ends the template's use: releases the editor and stores the mask.
    void Tini();

    // A DocName result as a path on disk: every "\" becomes "/".
    static std::string nativeDocPath(std::string_view docName);

private:
    struct RowValues;

    static RowValues testValues();
    static RowValues dataValues(CSVfile& data, std::int32_t line);
    std::string resolve(const RowValues& row, const std::string& mask) const;
    static bool folderOfDocExists(const std::string& docName);

    MaskStore& store_;
    std::unique_ptr<FileNameTemplateEditor> editor_;
    std::string wordPath_;
    std::string csvPath_;
    std::string mask_;
};

} // namespace wordbm
