#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "desktop/web/HttpMessage.h"

/// A request that is not answered as it wishes: the status of HTTP, and a sentence that says what is wrong and what to
/// do.
class Refusal : public std::runtime_error {
public:
    Refusal(unsigned status, std::string const& sentence) : std::runtime_error(sentence), status_(status) {}

    unsigned Status() const { return status_; }

private:
    unsigned status_;
};

/// The answer that tells a refusal: to the clients of the door for labels as plain text, to others as JSON.
HttpAnswer RefusalAnswer(std::string_view path, unsigned status, std::string const& sentence);

/// What `make` gives, or, if it throws, what tells so.
HttpAnswer AnswerOf(std::string_view path, std::function<HttpAnswer()> const& make);
