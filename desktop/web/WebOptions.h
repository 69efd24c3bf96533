#pragma once

#include <string>
#include <vector>

/// The options of `zpl web`, and those of `zpl serve` about it.
struct WebOptions {
    std::string host = "127.0.0.1";
    unsigned port = 9180;
    std::vector<std::string> hosts = {};    ///< further names that it is reached by
    std::vector<std::string> origins = {};  ///< of pages that may ask
    bool isWanted = true;                   ///< by `zpl serve`
    bool opens = false;                     ///< a browser
};
