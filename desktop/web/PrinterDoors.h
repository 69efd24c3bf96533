#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/web/PrinterClient.h"
#include "desktop/web/PrinterState.h"
#include "desktop/web/Router.h"
#include "desktop/web/WorkPool.h"

/// The doors to the printer that is behind this, if there is one: its state, its jobs, what it tells, words for it, and
/// printing. Among them those that pages in a browser look for at a local helper, to print through it.
class PrinterDoors {
public:
    /// `state` is null if there is no printer; `say` sends it a word as typed at its terminal.
    PrinterDoors(PrinterState* state, std::function<bool(std::string const&)> say);

    std::vector<Door> List();

private:
    using Make = std::function<HttpAnswer(PrinterState&, Visit&)>;

    Door Quick(char const* method, char const* path, Make make);
    Door Slow(char const* method, char const* path, Make make);
    PrinterState& State() const;
    std::shared_ptr<PrinterClient> Client();
    std::vector<Door> HelperDoors();
    void Events(Visit visit) const;
    HttpAnswer Print(Visit& visit);
    HttpAnswer Command(Visit const& visit) const;
    std::string DeviceJson() const;

    PrinterState* state_;
    std::function<bool(std::string const&)> say_;
    std::mutex mutex_;
    std::shared_ptr<PrinterClient> client_;
    WorkPool pool_;
};
