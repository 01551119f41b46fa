#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// The readers under test take a path, so each input is written to one private file first. The
// file lives in TMPDIR (or /tmp) under the process id and goes with the object.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& name);
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }
    // Replaces the file's content; aborts when it cannot, since the run would test nothing.
    void write(const std::uint8_t* data, std::size_t size) const;
    void write(const std::string& text) const;

private:
    std::string path_;
};
