#include <gtest/gtest.h>

#include "propertybus/PropertyIdentifiers.h"
#include "tests/plugin/Surface.h"

namespace {

TEST(Screen, LeadsFromItsHomeToEachRoomAndBack) {
    TheHost();
    messages.clear();
    Surface screen(QStringLiteral("PrinterScreen"), {800, 480});
    QImage const home = screen.Grab();
    for (char const* const room : {"Preview", "Templates", "Editor"}) {
        screen.Click(room);
        EXPECT_EQ(screen.TextOf("title"), room);
        EXPECT_NE(screen.Grab(), home) << room;
        screen.Click("home");
        EXPECT_EQ(screen.Grab(), home) << room;
    }
    // A room stays as it was left.
    screen.Click("Templates");
    for (char const* const surface : {"Several", "Fields"}) {
        screen.Click(surface);
        QImage const shown = screen.Grab();
        screen.Click("home");
        screen.Click("Templates");
        EXPECT_EQ(screen.Grab(), shown) << surface;
    }
    EXPECT_EQ(messages.join(u'\n').toStdString(), "");
}

}  // namespace
