#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "desktop/PageRanges.h"
#include "library/DeskSettings.h"
#include "library/PageFormat.h"

/// What the exit code of the command line says.
enum class ExitCode {
    Success = 0,
    NoLabel = 1,   ///< the stream holds no printable label
    Usage = 2,     ///< bad usage, an input that cannot be read or an output that cannot be written
    Findings = 3,  ///< under --strict: an unknown command that may change the page, or a barcode refused or cut
};

/// Bad usage; the text says in one line what is wrong and what to do.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The options of `zpl compare` beside those by which streams are drawn.
struct CompareOptions {
    unsigned tolerance = 0;        ///< dots of a page that may differ
    std::string differenceFolder;  ///< where pictures of the differences go; none are made if it is empty
};

/// The options of `zpl render` and `zpl check`.
struct RenderOptions : DeskSettings {
    std::vector<std::string> inputs;  ///< file names; "-" is standard input
    std::string outputFolder = ".";
    std::string outputFile;   ///< of all pages; "-" is standard output; empty: files are named by `namePattern`
    std::string namePattern;  ///< of files, with {stem}, {page} and {ext}; empty for the usual names
    PageFormat const* format = &PageFormats[0];
    bool isSplit = false;        ///< one file a page, also in a format of documents
    unsigned mostCopies = 1000;  ///< copies of one label that are drawn
    unsigned mostThreads = 0;    ///< that draw pages; 1: none beside the one that reads; 0: one for each processor
    PageRanges pages;            ///< of each input
    unsigned rotation = 0;       ///< of the pictures, in degrees clockwise: 0, 90, 180 or 270
    bool isDistinct = false;     ///< equal copies that follow each other are one page
    bool watches = false;        ///< draws inputs again when they change
    bool isQuiet = false;        ///< prints only what went wrong
    bool keepJob = false;
    bool json = false;
    bool strict = false;
    bool help = false;
};
