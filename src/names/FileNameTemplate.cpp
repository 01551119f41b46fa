#include "names/FileNameTemplate.h"

#include "data/CSVfile.h"
#include "support/Errors.h"
#include "support/FileOps.h"
#include "support/Folders.h"
#include "support/Strings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>

namespace wordbm {

namespace {

struct TagEntry {
    std::string_view tag;
    std::string_view description;
};

// The order is the order of replacement, which the quirk of values holding later tags depends on.
constexpr std::array<TagEntry, 8> Tags{{
    {"&W&", "Pfad der Seriendruck-Worddatei"},
    {"&E&", "Extension der Seriendruck-Worddatei"},
    {"&C&", "Pfad der Seriendruck-CSV-Datendatei"},
    {"&K&", "Klientenkonto 8-stellig"},
    {"&R&", "Rechnungsnummer 6-stellig"},
    {"&D&", "Rechnungsdatum JJJJMMDD"},
    {"&L&", "Rechnungs-Laufnummer 6-stellig"},
    {"&G&", "Klientenname (Geschäft)"},
}};

constexpr std::array<std::string_view, 8> EnvironmentNames{"HOMEPATH", "HOMEDRIVE", "USERNAME", "TEMP",
                                                           "TMP",      "BILLING",   "TARVELL",  "KDX6"};

struct StandardMask {
    std::string_view display;
    std::string_view mask;
};

constexpr std::array<StandardMask, 4> StandardMasks{{
    {"<WordVerz>\\<Konto>-<Datum>-<Nummer>-Rechnung", "&W&\\&K&-&D&-&R&-Rechnung.&E&"},
    {"<WordVerz>\\<Datum>-<Konto>-<Nummer>-Rechnung", "&W&\\&D&-&K&-&R&-Rechnung.&E&"},
    {"<WordVerz>\\<Nummer>-<Konto>-<Datum>-Rechnung", "&W&\\&R&-&K&-&D&-Rechnung.&E&"},
    {"<WordVerz>\\<Konto>\\<Datum>-<Nummer>-Rechnung", "&W&\\&K&\\&D&-&R&-Rechnung.&E&"},
}};

constexpr std::string_view Separators = "\\/";
constexpr int NumberWidth = 6;

// Serial days of 1 January 100 and 31 December 9999, the calendar that dates are read in.
constexpr double FirstSerial = -657434;
constexpr double LastSerial = 2958465;
constexpr std::chrono::days::rep OleEpochFromUnix = 25569;

template <typename Table>
const typename Table::value_type& entryAt(const Table& table, std::int32_t position) {
    if (position < 1 || position > static_cast<std::int32_t>(table.size())) {
        throw InvalidArgumentError();
    }
    return table[static_cast<std::size_t>(position - 1)];
}

// Everything before the last separator of either kind, one trailing separator removed.
std::string folderOf(std::string_view path) {
    const auto last = path.find_last_of(Separators);
    if (last == std::string_view::npos) {
        return {};
    }
    std::string_view folder = path.substr(0, last);
    if (!folder.empty() && Separators.find(folder.back()) != std::string_view::npos) {
        folder.remove_suffix(1);
    }
    return std::string(folder);
}

// Taken from the file name alone, so that a point in a folder name cannot bring a folder along.
std::string extensionOf(std::string_view path) {
    const auto last = path.find_last_of(Separators);
    const std::string_view name = last == std::string_view::npos ? path : path.substr(last + 1);
    const auto point = name.rfind('.');
    return point == std::string_view::npos ? std::string() : std::string(name.substr(point + 1));
}

std::string withoutFolders(std::string value) {
    std::replace(value.begin(), value.end(), '/', '_');
    std::replace(value.begin(), value.end(), '\\', '_');
    return value;
}

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

// The Windows variables a mask may name, read from their Linux counterparts where they are unset.
std::string environmentValue(std::string_view name) {
    if (std::optional<std::string> value = environmentVariable(std::string(name))) {
        return *value;
    }
    const std::string home = environmentVariable("HOME").value_or(std::string());
    if (name == "USERNAME") {
        return environmentVariable("USER").value_or(environmentVariable("LOGNAME").value_or(std::string()));
    }
    if (name == "USERPROFILE" || name == "HOMEPATH") {
        return home; // HOMEDRIVE stays empty: %HOMEDRIVE%%HOMEPATH% is the home folder
    }
    if (name == "TEMP" || name == "TMP") {
        const std::string temp = environmentVariable("TMPDIR").value_or(std::string());
        return temp.empty() ? std::string("/tmp") : temp;
    }
    if (name == "APPDATA") {
        const std::string config = environmentVariable("XDG_CONFIG_HOME").value_or(std::string());
        return config.starts_with('/') || home.empty() ? config : home + "/.config";
    }
    return {};
}

// Named in masks beside the editor's table: the profile and the application-data folder.
constexpr std::array<std::string_view, 2> FurtherEnvironmentNames{"USERPROFILE", "APPDATA"};

// Where environmentValue reads a Windows variable from when it is unset here.
std::string environmentOrigin(std::string_view name) {
    if (environmentVariable(std::string(name))) {
        return {};
    }
    if (name == "USERNAME") {
        return "$USER";
    }
    if (name == "USERPROFILE" || name == "HOMEPATH") {
        return "$HOME";
    }
    if (name == "TEMP" || name == "TMP") {
        return "$TMPDIR oder /tmp";
    }
    if (name == "APPDATA") {
        return "$XDG_CONFIG_HOME oder ~/.config";
    }
    return {};
}

// A variable is the user's own setting, like &W&: it keeps its folder separators.
std::string withEnvironment(std::string name, bool foldersAllowed) {
    const auto replace = [&](std::string_view variable) {
        const std::string value = environmentValue(variable);
        name = replaceAll(name, "%" + std::string(variable) + "%",
                          foldersAllowed ? value : withoutFolders(value));
    };
    std::for_each(EnvironmentNames.begin(), EnvironmentNames.end(), replace);
    std::for_each(FurtherEnvironmentNames.begin(), FurtherEnvironmentNames.end(), replace);
    return name;
}

std::string compactDate(long long year, long long month, long long day) {
    return zeroPad(year, 4) + zeroPad(month, 2) + zeroPad(day, 2);
}

std::string compactDate(Date date) {
    using namespace std::chrono;
    double serial = std::trunc(date.serial);
    if (!(serial >= FirstSerial && serial <= LastSerial)) {
        serial = 0; // no calendar date: as if the field were missing
    }
    const year_month_day civil{sys_days{days{static_cast<days::rep>(serial) - OleEpochFromUnix}}};
    return compactDate(static_cast<int>(civil.year()), static_cast<unsigned>(civil.month()),
                       static_cast<unsigned>(civil.day()));
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return compactDate(local.tm_year + 1900LL, local.tm_mon + 1LL, local.tm_mday);
}

// An absurd number counts as a missing one, as an empty field does.
std::string paddedNumber(CSVfile& data, std::string_view field, std::int32_t line) {
    try {
        return zeroPad(data.FieldLong(field, line), NumberWidth);
    } catch (const OverflowError&) {
        return zeroPad(0, NumberWidth);
    }
}

Date invoiceDate(CSVfile& data, std::int32_t line) {
    try {
        return data.FieldDate("RgDatum", line);
    } catch (const OverflowError&) {
        return Date{};
    }
}

} // namespace

struct FileNameTemplate::RowValues {
    std::string account;
    std::string number;
    std::string date;
    std::string run;
    std::string client;
};

FileNameTemplate::FileNameTemplate(MaskStore& store, std::unique_ptr<FileNameTemplateEditor> editor)
    : store_(store), editor_(std::move(editor)) {}

std::int32_t FileNameTemplate::TagsCount() {
    return static_cast<std::int32_t>(Tags.size());
}

std::string FileNameTemplate::TagsName(std::int32_t position) {
    return std::string(entryAt(Tags, position).description);
}

std::string FileNameTemplate::TagsValue(std::int32_t position) {
    return std::string(entryAt(Tags, position).tag);
}

std::int32_t FileNameTemplate::EnvVarCount() {
    return static_cast<std::int32_t>(EnvironmentNames.size());
}

std::string FileNameTemplate::EnvVarName(std::int32_t position) {
    return "%" + std::string(entryAt(EnvironmentNames, position)) + "%";
}

std::string FileNameTemplate::EnvVarValue(std::int32_t position) {
    return environmentValue(entryAt(EnvironmentNames, position));
}

std::vector<FileNameTemplate::EnvironmentEntry> FileNameTemplate::EnvironmentEntries() {
    std::vector<EnvironmentEntry> entries;
    const auto add = [&entries](std::string_view name) {
        entries.push_back({"%" + std::string(name) + "%", environmentValue(name), environmentOrigin(name)});
    };
    std::for_each(EnvironmentNames.begin(), EnvironmentNames.end(), add);
    std::for_each(FurtherEnvironmentNames.begin(), FurtherEnvironmentNames.end(), add);
    return entries;
}

std::int32_t FileNameTemplate::DefaultsCount() {
    return static_cast<std::int32_t>(StandardMasks.size());
}

std::string FileNameTemplate::DefaultsName(std::int32_t position) {
    return std::string(entryAt(StandardMasks, position).display);
}

std::string FileNameTemplate::DefaultsValue(std::int32_t position) {
    return std::string(entryAt(StandardMasks, position).mask);
}

void FileNameTemplate::Template(const std::string& mask) {
    if (!mask.empty()) {
        mask_ = mask;
        return;
    }
    mask_ = store_.load();
    if (mask_.empty()) {
        mask_ = DefaultsValue(1);
    }
}

bool FileNameTemplate::Edit(const std::optional<std::string>& mask) {
    if (mask) {
        Template(*mask);
    }
    if (editor_) {
        if (auto confirmed = editor_->Show(*this, mask_)) {
            mask_ = std::move(*confirmed);
        }
    }
    return false;
}

bool FileNameTemplate::IsValid(std::int32_t line) const {
    return folderOfDocExists(DocName(line));
}

bool FileNameTemplate::IsValid(std::int32_t line, CSVfile& data) const {
    return folderOfDocExists(DocName(line, data));
}

std::string FileNameTemplate::DocName(std::int32_t line) const {
    if (csvPath_.empty()) {
        return resolve(testValues(), mask_);
    }
    CSVfile data;
    data.ReadFile(nativePath(csvPath_));
    return resolve(dataValues(data, line), mask_);
}

std::string FileNameTemplate::DocName(std::int32_t line, CSVfile& data) const {
    return DocName(line, data, mask_);
}

std::string FileNameTemplate::DocName(std::int32_t line, CSVfile& data, const std::string& mask) const {
    return resolve(csvPath_.empty() ? testValues() : dataValues(data, line), mask);
}

void FileNameTemplate::Tini() {
    editor_.reset();
    store_.save(mask_);
}

std::string FileNameTemplate::nativeDocPath(std::string_view docName) {
    return nativePath(docName);
}

FileNameTemplate::RowValues FileNameTemplate::testValues() {
    return {"11111111", "222222", today(), "333333", "Klientname"};
}

FileNameTemplate::RowValues FileNameTemplate::dataValues(CSVfile& data, std::int32_t line) {
    return {data.FieldStr("KliKonto", line), paddedNumber(data, "RgNummer", line),
            compactDate(invoiceDate(data, line)), paddedNumber(data, "BesrRunNr", line),
            data.FieldStr("KliName", line)};
}

std::string FileNameTemplate::resolve(const RowValues& row, const std::string& mask) const {
    const std::array<std::string, Tags.size()> values{
        wordPath_.empty() ? std::string("<word-path>") : folderOf(wordPath_),
        wordPath_.empty() ? std::string("<word-ext>") : extensionOf(wordPath_),
        csvPath_.empty() ? std::string("<csv-path>") : folderOf(csvPath_),
        withoutFolders(row.account),
        row.number,
        row.date,
        row.run,
        withoutFolders(row.client)};
    // The mask's own variables first, with their separators; a variable that a control-file value
    // brings in is still replaced afterwards, but can never add a folder level.
    std::string name = withEnvironment(mask, true);
    for (std::size_t i = 0; i < Tags.size(); ++i) {
        name = replaceAll(name, Tags[i].tag, values[i]);
    }
    return withEnvironment(name, false);
}

bool FileNameTemplate::folderOfDocExists(const std::string& docName) {
    const std::string path = nativeDocPath(docName);
    const auto last = path.rfind('/');
    return last != std::string::npos && last > 0 && folderExists(path.substr(0, last));
}

} // namespace wordbm
