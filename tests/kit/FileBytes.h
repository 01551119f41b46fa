#pragma once

#include <string>

// A file's bytes as they are; "" when it cannot be read.
std::string readBytes(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);
