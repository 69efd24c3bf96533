#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "fields/graphics/StoredGraphics.h"
#include "frontend/context/ObjectStore.h"

namespace {

constexpr DrawRow Shapes[] = {
    {"box", "^FO10,20^GB100,50,3^FS", "box 10,20 100x50 border 3\n"},
    {"box without parameters is a dot", "^FO10,20^GB^FS", "box 10,20 1x1 border 1\n"},
    {"sides below the thickness are raised", "^FO10,20^GB700,0,3^FS^FO0,0^GB101,92,101^FS",
     "box 10,20 700x3 border 3\nbox 0,0 101x101 border 101\n"},
    {"sides and thickness keep their limits", "^FO0,0^GB99999,5,0^FS", "box 0,0 32000x5 border 1\n"},
    {"white box", "^FO1,1^GB9,9,9,w^FS^FO1,1^GB9,9,9^FS", "box 1,1 9x9 border 9 white\nbox 1,1 9x9 border 9\n"},
    {"what follows a white shape is black", "^FO1,1^GC9,1,W^FS^FO1,1^GE9,9,1,W^FS^FO1,1^GD9,9,1,W^FS^FO1,2^FDx^FS",
     "ellipse 1,1 9x9 border 1 white\nellipse 1,1 9x9 border 1 white\ndiagonal 1,1 9x9 1 / white\ntext 1,2 'x' A "
     "1x1\n"},
    {"rounded corners", "^FO0,0^GB80,40,2,B,8^FS^FO0,0^GB80,40,2,B,3^FS^FO0,0^GB80,40,2,B,99^FS",
     "box 0,0 80x40 border 2 radius 20\nbox 0,0 80x40 border 2 radius 7\nbox 0,0 80x40 border 2 radius 20\n"},
    {"box on its base", "^FT10,100^GB30,20,1^FS", "box 10,81 30x20 border 1\n"},
    {"box right of its origin", "^FO100,20,1^GB30,20,1^FS", "box 70,20 30x20 border 1\n"},
    {"boxes do not turn with the fields", "^FWR^FO10,20^GB30,20,1^FS", "box 10,20 30x20 border 1\n"},
    {"reversed box", "^FO0,0^FR^GB5,5,5^FS", "box 0,0 5x5 border 5 reverse\n"},
    {"fields go on behind a box", "^FT10,100^GB30,20,1^FS^FT^GB5,5,1^FS",
     "box 10,81 30x20 border 1\nbox 40,96 5x5 border 1\n"},
    {"circle", "^FO1,2^GC50,4^FS^FO1,2^GC^FS^FO1,2^GC9999,9999,W^FS",
     "ellipse 1,2 50x50 border 4\nellipse 1,2 3x3 border 1\nellipse 1,2 4095x4095 border 4095 white\n"},
    {"ellipse", "^FO1,2^GE50,30,4^FS^FO1,2^GE,30,8^FS", "ellipse 1,2 50x30 border 4\nellipse 1,2 8x30 border 8\n"},
    {"diagonal", "^FO1,2^GD50,30,4,B,L^FS^FO1,2^GD50,30,4,w,\\^FS^FO1,2^GD50,30^FS",
     "diagonal 1,2 50x30 4 \\\ndiagonal 1,2 50x30 4 \\ white\ndiagonal 1,2 50x30 1 /\n"},
    {"marks", "^FO1,2^GSN,30,20^FDAxBC^FS", "image 1,2 60x30 from 60x30 scaled\n"},
    {"turned marks on their base", "^FT100,200^GSR,30,20^FDED^FS", "image 100,200 40x30 from 40x30 scaled turned 90\n"},
    {"marks of the default size", "^CF0,50,40^FO1,2^GS^FDA^FS^FO1,2^GSN,,9^FDA^FS^FO1,2^GSN,0,9^FDA^FS",
     "image 1,2 40x50 from 40x50 scaled\nimage 1,2 9x50 from 9x50 scaled\nimage 1,2 9x9 from 9x9 scaled\n"},
    {"no mark of that letter", "^FO1,2^GSN,30,20^FDx^FS", ""},
};
TEST(Graphics, Shapes) { ExpectDrawings(Shapes); }

constexpr DrawRow Pictures[] = {
    {"text", "^FO5,6^GFA,4,4,2,FFFF8001^FS", "image 5,6 16x2 from 16x2 scaled\n"},
    {"commas are fills", "^FO5,6^GFA,4,6,2,FF,80,,^FS", "image 5,6 16x2 from 16x2 scaled\n"},
    {"raw bytes", {"^FO5,6^GFB,4,4,2,\xFF^,\x00^FS", 24}, "image 5,6 16x2 from 16x2 scaled\n"},
    {"packed form is read as text", "^FO5,6^GFC,4,4,2,FFFF8001^FS", "image 5,6 16x2 from 16x2 scaled\n"},
    {"form left out", "^FO5,6^GF,4,4,2,FFFF8001^FS", "image 5,6 16x2 from 16x2 scaled\n"},
    {"a missing count", "^FO5,6^GFA,4,,2,FFFF8001^FS", ""},
    {"on its base, by its declared height", "^FT5,100^GFA,4,20,2,FFFF8001^FS", "image 5,91 16x2 from 16x2 scaled\n"},
    {"without its end", "^FO5,6^GFA,1,1,1,FF^FO7,8^FR^GFA,1,1,1,FF^FT1,90^FDx^FS",
     "image 5,6 8x1 from 8x1 scaled\nimage 7,8 8x1 from 8x1 scaled reverse\ntext 1,76 'x' A 1x1\n"},
    {"placed behind the data", "^GFA,1,1,1,FF^FO7,8^FS", "image 7,8 8x1 from 8x1 scaled\n"},
    {"white picture", "^FO5,6^GFA,4,4,2,00000000^FS^FT^GB2,2,1^FS",
     "image 5,6 16x2 from 16x2 scaled\nbox 21,6 2x2 border 1\n"},
};
TEST(Graphics, Pictures) { ExpectDrawings(Pictures); }

TEST(Graphics, SpellingsGiveOnePicture) {
    FieldBench bench;
    std::vector<std::uint8_t> const expected{0xFF, 0xF0, 0x80, 0x00, 0x80, 0x00};
    for (char const* data : {"FFF080008000", "IF,8,:", "IF08I08I0", "IF,8,8", "FFf0 8000 8000"}) {
        bench.Run("^FO0,0^GFA,9,6,2," + std::string(data) + "^FS");
        auto rows = bench.target->lastImage;
        rows.resize(6);
        EXPECT_EQ(rows, expected) << data;
    }
}

TEST(StoredGraphics, AreRecalledByName) {
    FieldBench bench;
    bench.Run("~DGR:LOGO.GRF,4,2,F00F8001");
    EXPECT_EQ(bench.Run("^FO5,6^XGR:LOGO.GRF,2,3^FS^FO5,6^XGlogo^FS^FO5,6^IMR:LOGO.GRF,9,9^FS"),
              "image 5,6 32x6 from 16x2 scaled\nimage 5,6 16x2 from 16x2 scaled\nimage 5,6 16x2 from 16x2 scaled\n");
    EXPECT_EQ(bench.target->lastImage, (std::vector<std::uint8_t>{0xF0, 0x0F, 0x80, 0x01}));
    EXPECT_EQ(bench.Run("^FO5,6^XGE:LOGO.GRF^FS^FO5,6^XGR:OTHER.GRF^FS"), "");
    bench.Run("~DGR:LOGO.GRF,1,1,FF");
    EXPECT_EQ(bench.Run("^FO5,6^XGR:LOGO^FS"), "image 5,6 8x1 from 8x1 scaled\n");
}

TEST(StoredGraphics, AreLookedForOnAllDevices) {
    FieldBench bench;
    bench.Run("~DGB:X.GRF,1,1,FF~DGA:X.GRF,2,2,FFFF");
    EXPECT_EQ(bench.Run("^FO0,0^XGX^FS"), "image 0,0 8x1 from 8x1 scaled\n");
    bench.Run("~DGE:X.GRF,3,3,FFFFFF");
    EXPECT_EQ(bench.Run("^FO0,0^XGX^FS"), "image 0,0 24x1 from 24x1 scaled\n");
}

TEST(StoredGraphics, NamesNeverLeaveTheirFolder) {
    FieldBench bench;
    bench.Run("~DGR:../EVIL.GRF,1,1,FF~DGR:/tmp/x.GRF,1,1,FF~DGQ:A.GRF,1,1,FF~DGZ:A.GRF,1,1,FF~DGR:A.G/F,1,1,FF");
    EXPECT_FALSE(std::filesystem::exists(bench.folder));
    EXPECT_EQ(bench.reports.size(), 5U);
}

TEST(StoredGraphics, DamagedFilesAreNotDrawn) {
    FieldBench bench;
    bench.Run("~DGR:A.GRF,2,1,FF81");
    auto const path = bench.folder / "R" / "A.GRF";
    auto const whole = std::filesystem::file_size(path);
    for (std::uintmax_t size = 0; size < whole; ++size) {
        bench.Run("~DGR:A.GRF,2,1,FF81");
        std::filesystem::resize_file(path, size);
        // Whole rows that are lacking are white, as they are where the sender sends none.
        std::string const drawn = bench.Run("^FO0,0^XGR:A^FS");
        EXPECT_EQ(drawn, size + 1 < whole ? "" : "image 0,0 8x1 from 8x1 scaled\n") << size << " of " << whole;
    }
    std::filesystem::resize_file(path, whole + 100);
    EXPECT_EQ(bench.Run("^FO0,0^XGR:A^FS"), "");
}

TEST(StoredGraphics, ADeviceFillsUp) {
    FieldBench bench;
    auto picture = *ZplCore::MakePicture(40 * 1024 * 1024, 4096);
    picture.rows.resize(40 * 1024 * 1024, 0xFF);
    auto const name = [](char const* text) { return *ObjectName::Parse(text, 'R', "X", "GRF"); };
    EXPECT_TRUE(ZplCore::StoreGraphic(bench.folder, name("R:A"), picture));
    EXPECT_FALSE(ZplCore::StoreGraphic(bench.folder, name("R:B"), picture));
    EXPECT_TRUE(ZplCore::StoreGraphic(bench.folder, name("R:A"), picture));  // in its own place
    EXPECT_TRUE(ZplCore::StoreGraphic(bench.folder, name("E:B"), picture));
    EXPECT_EQ(bench.reports.size(), 1U);
    ClearMemoryDevice(bench.folder);
    EXPECT_TRUE(ZplCore::StoreGraphic(bench.folder, name("R:B"), picture));
    EXPECT_FALSE(ZplCore::StoreGraphic(bench.folder, name("E:C"), picture));
}

}  // namespace
