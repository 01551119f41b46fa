#pragma once

#include <stdexcept>
#include <string>

// The few failures that must reach a caller (everything else returns neutral values).
namespace wordbm {

// A number does not fit the target type (e.g. 40000 as a 16-bit integer).
class OverflowError : public std::overflow_error {
public:
    OverflowError() : std::overflow_error("Überlauf") {}
};

// An index outside a fixed-size list (e.g. a 31st command-line switch).
class IndexError : public std::out_of_range {
public:
    IndexError() : std::out_of_range("Index ausserhalb des gültigen Bereichs") {}
};

// A collection was asked for a position it does not have.
class InvalidArgumentError : public std::invalid_argument {
public:
    InvalidArgumentError() : std::invalid_argument("Ungültiger Prozeduraufruf oder ungültiges Argument") {}
};

} // namespace wordbm
