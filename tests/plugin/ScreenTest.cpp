#include <gtest/gtest.h>

#include <optional>

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

/// What the print driver holds of a property.
template <typename T>
auto Held(char const* identifier) {
    auto const property = std::dynamic_pointer_cast<T>(TheHost().properties->Find(identifier));
    return property ? std::optional(property->Get()) : std::nullopt;
}

TEST(Screen, OrdersWhatItsButtonsSayAndShowsWhatThePrinterSays) {
    auto& host = TheHost();
    messages.clear();
    auto const prints = [&](std::string const& job, char const* status) {
        host.Set<StringProperty>(PropertyNames::PrintJobStatus, status);
        host.Set<StringProperty>(PropertyNames::JobToPrintPathName, job);
        Surface::Settle();
    };
    prints("/jobs/a", "Printing");
    Surface screen(QStringLiteral("PrinterScreen"), {800, 480});
    screen.Click("pause");
    EXPECT_EQ(Held<BoolProperty>(PropertyNames::PausePrinting), true);
    EXPECT_EQ(screen.TextOf("pause"), "Pause") << "the printer has not said that it stands";
    for (char const* const status : {"Print Paused", "Print Error"}) {
        host.Set<BoolProperty>(PropertyNames::PausePrinting, true);
        prints("/jobs/a", status);
        EXPECT_EQ(screen.TextOf("state"), std::string(status) + ", page 1");
        screen.Click("pause");
        EXPECT_EQ(Held<BoolProperty>(PropertyNames::PausePrinting), false) << status;
    }

    screen.Click("cancel");
    screen.Click("reject");
    EXPECT_EQ(Held<StringProperty>(PropertyNames::JobToCancel).value_or(""), "") << "it asks first";
    screen.Click("cancel");
    prints("/jobs/b", "Printing");
    EXPECT_FALSE(screen.Has("words")) << "the job that was asked about is over";
    screen.Click("cancel");
    screen.Click("accept");
    EXPECT_EQ(Held<StringProperty>(PropertyNames::JobToCancel), "/jobs/b");
    prints("NO PAGE", "");
    EXPECT_FALSE(screen.Item("cancel").isEnabled());
    EXPECT_EQ(messages.join(u'\n').toStdString(), "");
}

}  // namespace
