#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace wordbm {

// `wordbm check` and `wordbm qrcode`: the QR-bill data of a control file, without any form.
// Each returns the process exit code: 0 fine, 1 warnings found, 2 the input could not be used.
class BatchCheck {
public:
    BatchCheck(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    // Lists the warnings of every invoice row (a row with "RgDatum") and a summary.
    int check(const std::string& csvPath);

    // Writes the row's QR code as PNG and/or its payload bytes exactly as the code carries them.
    int qrcode(const std::string& csvPath, std::int32_t row, const std::string& pngPath, bool printText);

private:
    bool load(const std::string& csvPath, class CSVfile& data);

    std::ostream& out_;
    std::ostream& err_;
};

} // namespace wordbm
