#pragma once

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <filesystem>
#include <functional>
#include <string>

#include "desktop/serve/ServeOptions.h"
#include "desktop/web/WebOptions.h"

/// The desk in the browser, as a process beside the printer's: it is told what the printer tells and says what its
/// users want. Whatever it does, nothing waits for it: what it does not take in time it is not told.
class WebProcess : public QObject {
public:
    struct Hooks {
        std::function<void(std::string const&)> say;   ///< takes a word
        std::function<void(std::string const&)> tell;  ///< takes a line for people
        std::function<void(std::string const&)> isAt;  ///< it is reached at that address
        std::function<void()> hasBegun;                ///< it knows nothing yet
    };

    WebProcess(std::filesystem::path const& program, WebOptions const& options, Hooks hooks);
    ~WebProcess() override;

    /// One line.
    void Tell(std::string const& json);

private:
    void Start();
    void NoteEnd(int code);
    void ReadWords();

    QProcess process_;
    QTimer pause_;
    Hooks hooks_;
    std::string said_;
    unsigned lost_ = 0;  ///< lines
    bool isEnding_ = false;
};
