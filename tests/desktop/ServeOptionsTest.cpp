#include "desktop/serve/ServeOptions.h"

#include <gtest/gtest.h>

#include "desktop/CommandLine.h"
#include "desktop/serve/Listener.h"

namespace {

std::string ErrorOf(std::vector<std::string> const& arguments) {
    try {
        auto const options = ParseServeOptions(arguments);
        Listener(options.host, options.port);
    } catch (std::exception const& error) {
        return error.what();
    }
    return "";
}

TEST(ServeOptions, SaysWhatIsAllowed) {
    struct Row {
        std::vector<std::string> arguments;
        std::string error;
    };
    std::string const address = "--listen is HOST:PORT, with a PORT of 0 to 65535, not ";
    for (auto const& [arguments, error] : std::vector<Row>{
             {{"--listen", "0", "--speed", "0"}, ""},
             {{"--listen", "localhost:0"}, ""},
             {{"--listen", "foo"}, address + "\"foo\""},
             {{"--listen", ":9100"}, address + "\":9100\""},
             {{"--listen", "127.0.0.1:99999"}, address + "\"127.0.0.1:99999\""},
             {{"--listen", "127.0.0.1:"}, address + "\"127.0.0.1:\""},
             {{"--listen", "[::1]:0"}, ""},
             {{"--listen", "::1:0"}, "an IPv6 address stands in brackets, as in --listen [::1]:9100, not \"::1:0\""},
             {{"--listen", "[2001:db8::1]:0"}, "cannot listen at [2001:db8::1]:0: Cannot assign requested address"},
             {{"--listen", "8.8.8.8:0"}, "cannot listen at 8.8.8.8:0: Cannot assign requested address"},
             {{"--speed", "-1"}, "--speed is 0 to 1000 inches a second, not \"-1\""},
             {{"--speed", "fast"}, "--speed is 0 to 1000 inches a second, not \"fast\""},
             {{"--speed"}, "--speed needs a value"},
         })
        EXPECT_EQ(ErrorOf(arguments), error) << arguments.back();
    EXPECT_TRUE(Listener("localhost", 0).IsLocal());
    EXPECT_TRUE(Listener("::1", 0).IsLocal());
    EXPECT_FALSE(Listener("0.0.0.0", 0).IsLocal());
    EXPECT_FALSE(Listener("::", 0).IsLocal());
}

}  // namespace
