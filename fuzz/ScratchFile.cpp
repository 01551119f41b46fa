#include "ScratchFile.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

ScratchFile::ScratchFile(const std::string& name) {
    const char* folder = std::getenv("TMPDIR");
    path_ = std::string(folder && *folder ? folder : "/tmp") + "/wordbm-fuzz-" + std::to_string(::getpid()) +
            "-" + name;
}

ScratchFile::~ScratchFile() {
    std::remove(path_.c_str());
}

void ScratchFile::write(const std::uint8_t* data, std::size_t size) const {
    std::FILE* file = std::fopen(path_.c_str(), "wb");
    if (!file || (size > 0 && std::fwrite(data, 1, size, file) != size) || std::fclose(file) != 0) {
        std::perror(path_.c_str());
        std::abort();
    }
}

void ScratchFile::write(const std::string& text) const {
    write(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}
