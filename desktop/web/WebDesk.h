#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "desktop/web/DrawingDoors.h"
#include "desktop/web/HttpServer.h"
#include "desktop/web/PrinterDoors.h"
#include "desktop/web/PrinterLink.h"
#include "desktop/web/PrinterState.h"
#include "desktop/web/RequestGuard.h"
#include "desktop/web/Router.h"
#include "desktop/web/WebOptions.h"

/// The desk in the browser: all doors behind one server.
class WebDesk {
public:
    /// `files`: where the page and what belongs to it are installed; `hasPrinter`: one is at the other end of standard
    /// input and output. Throws if it cannot listen.
    WebDesk(WebOptions const& options, MachineSettings const& machine, std::filesystem::path const& files,
            bool hasPrinter);

    /// As it is typed into a browser.
    std::string Address() const;
    bool IsLocal() const { return server_.IsLocal(); }
    /// Serves until a signal ends it.
    void Run();

private:
    HttpServer::Doors Entrance();
    std::optional<HttpAnswer> Admit(HttpRequest const& request) const;
    void Open(HttpRequest request, HttpServer::Reply const& reply) const;
    HttpAnswer Complete(HttpAnswer answer, std::string const& origin) const;
    HttpAnswer Refuse(HttpRequest const& request, unsigned status, std::string const& sentence) const;
    HttpAnswer Preflight(HttpRequest const& request) const;

    WebOptions const options_;
    RequestGuard const guard_;
    Router router_;
    HttpServer server_;
    DrawingDoors drawing_;
    PrinterState printer_;
    PrinterDoors printing_;
    std::optional<PrinterLink> link_;
};
