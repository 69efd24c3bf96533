#pragma once

#include <stdexcept>

/// Pages or lines could not be written, which ends the run; the text is one line for the user.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
