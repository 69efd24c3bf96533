#include "library/forms/Batch.h"

#include <gtest/gtest.h>

#include "library/forms/BatchJournal.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

class BatchTest : public testing::Test {
protected:
    std::filesystem::path List(std::string const& bytes) {
        std::ofstream(file_, std::ios::binary) << bytes;
        return file_;
    }
    /// Values parted by bars, rows by line ends, faults as they are told.
    std::string Read(std::string const& bytes) {
        std::string all;
        try {
            ValueList list(List(bytes));
            for (bool isMore = true; isMore;) {
                try {
                    auto const row = list.Next();
                    isMore = row.has_value();
                    for (std::size_t i = 0; row && i < row->values.size(); ++i)
                        all += (i > 0 ? "|" : "") + row->values[i].text;
                } catch (ValueListError const& error) {
                    all += error.what();
                }
                all += isMore ? "\n" : "";
            }
        } catch (std::runtime_error const& error) {
            all += error.what();
        }
        return all;
    }

    TemporaryDirectory folder_;
    std::filesystem::path file_ = folder_ / "list.csv";
    TemplateField const name_{1, "Name", "Who", "", {true}};
    TemplateField const code_{2, "", "Code", "77", {false, true, 0, 4}};
    BatchTemplate const template_{{"E", "T.ZPL"}, "", {name_, code_}};
};

TEST_F(BatchTest, ReadsLists) {
    struct Row {
        std::string bytes;
        char const* read;
    };
    std::string const zero("a\n1\0\n", 5);
    for (auto const& row : std::vector<Row>{
             {"a,b\n1,2\n3,4", "1|2\n3|4\n"},
             {"a;b\r\n\"1;,\";2\r\n\r\n3;\"\"\r\n", "1;,|2\n3|\n"},
             {"\xEF\xBB\xBF\"a\",b\n\"x \"\"y\"\"\r\nz\",2\n", "x \"y\"\r\nz|2\n"},
             {"a\tb\n,\t5\"\n", ",|5\"\n"},
             {"a\r1\r2", "1\n2\n"},
             {"a,b\n1\n1,2,3\n4,5",
              "line 2, column 1: the row has 1 value, and the list 2 columns\n"
              "line 3, column 5: the row has 3 values, and the list 2 columns\n4|5\n"},
             {"a,b\n1,\xE9\n2,3\n", "line 2, column 3: the value is not UTF-8: save the list as CSV in UTF-8\n2|3\n"},
             {"a,b\n\"1\n\"x,2\n3,4\n",
              "line 2, column 1: text stands behind the closing quotation mark of a value\n3|4\n"},
             {"a,b\n1,\"2\n", "line 2, column 3: the quotation mark that opens this value is never closed\n"},
             {zero, "line 2, column 1: the value holds a byte of zero: save the list as CSV in UTF-8\n"},
             {"a\n" + std::string(ValueList::LongestRow + 1, 'x') + "\n1\n",
              "line 2, column 1: the row is longer than 1048576 bytes\n1\n"},
             {"a, a \n", "line 1, column 3: there is another column \"a\""},
             {"", "line 1, column 1: the list is empty: its first line holds the names of the columns"},
             {"\xFF\xFE"
              "a",
              "line 1, column 1: the list is UTF-16: save it as CSV in UTF-8"},
         })
        EXPECT_EQ(Read(row.bytes), row.read) << row.bytes.substr(0, 40);
    EXPECT_EQ(ValueList(List("x,y;z;u\n")).Separator(), ';');
    EXPECT_THROW(ValueList(folder_ / "none.csv"), std::runtime_error);
    EXPECT_THROW(ValueList(folder_.Path()), std::runtime_error);
}

TEST_F(BatchTest, LooksThroughAListBeforeItPrints) {
    struct Row {
        char const* bytes;
        std::string refusal;
        std::vector<std::string> remarks;
        std::vector<std::string> faults;
        unsigned labels;
    };
    for (auto const& row : std::vector<Row>{
             {"WHO,fn2,Copies\na,1,2\nb,,3\n", "", {}, {}, 5},
             {"name,2\na,1\n", "", {}, {}, 1},
             {"who,colour\na,x\n",
              "",
              {"the list has no column for \"Code\" of T.ZPL: it is \"77\"",
               "no field has the name of the column \"colour\""},
              {},
              1},
             {"code\n1\n",
              "the list has no column for \"Who\" of T.ZPL",
              {"the list has no column for \"Who\" of T.ZPL: it stays empty"},
              {},
              0},
             {"who,code,labels\n,1,1\nb,x,1\nc,1,0\nd,12345,1\ne,1,1\n",
              "",
              {},
              {"line 2, column 1: Who: a value is needed here", "line 3, column 3: Code: only digits may stand here",
               "line 4, column 5: \"0\" is no number of labels",
               "line 5, column 3: Code: at most 4 characters, and there are 5"},
              1},
             {"who\n",
              "the list has no rows behind its first line",
              {"the list has no column for \"Code\" of T.ZPL: it is \"77\""},
              {},
              0},
         }) {
        auto const check = CheckBatch(List(row.bytes), {template_}, [] { return true; });
        EXPECT_EQ(check.refusal, row.refusal) << row.bytes;
        EXPECT_EQ(check.remarks, row.remarks) << row.bytes;
        EXPECT_EQ(check.faults, row.faults) << row.bytes;
        EXPECT_EQ(check.faulty, row.faults.size()) << row.bytes;
        EXPECT_EQ(check.labels, row.labels) << row.bytes;
    }
}

TEST_F(BatchTest, GoesOnBehindTheRowsThatWereTaken) {
    std::string bytes = "who,code\n";
    for (int i = 1; i <= 60; ++i) bytes += "n" + std::to_string(i) + (i == 30 ? ",x\n" : ",1\n");
    BatchTemplate other = template_;
    other.format.name = "U.ZPL";
    List(bytes);
    std::string all;
    std::uint64_t labels = 0;
    for (Batch batch(file_, {template_, other}, {});;) {
        auto const piece = batch.Next();
        if (!piece) break;
        labels += piece->labels;
        all += piece->stream.substr(3);
        Batch next(file_, {template_, other}, {}, piece->lastRow);
        auto const following = next.Next();
        EXPECT_EQ(following ? following->firstRow : 61, piece->lastRow + 1);
    }
    EXPECT_EQ(labels, 118U) << "of two templates, but for the row that cannot print";
    std::size_t place = 0;
    for (int i = 1; i <= 60; ++i) {
        for (char const* format : {"T", "U"}) {
            if (i == 30) continue;
            auto const label = "^XA^XFE:" + std::string(format) + ".ZPL^FS^FN1^FH_^FDn" + std::to_string(i) +
                               "^FS^FN2^FH_^FD1^FS^PQ1^XZ\n";
            EXPECT_EQ(all.substr(place, label.size()), label);
            place += label.size();
        }
    }
    EXPECT_EQ(place, all.size());
}

TEST_F(BatchTest, KeepsHowFarItHasCome) {
    BatchJournal const journal(folder_ / "batch.json");
    EXPECT_FALSE(journal.Read());
    List("a\n");
    auto const state = BatchRecord::StateOf(file_);
    BatchRecord const record{file_.string(), state, {{"E", "T.ZPL"}, {"R", "U.ZPL"}}, 1000, 3000, 25, 50};
    journal.Write(record);
    auto const read = journal.Read();
    ASSERT_TRUE(read);
    EXPECT_EQ(std::tie(read->list, read->listState, read->rows, read->labels, read->taken, read->underWay),
              std::tie(record.list, state, record.rows, record.labels, record.taken, record.underWay));
    EXPECT_EQ(read->formats.at(1).FullName(), "R:U.ZPL");
    List("a\n1\n");
    EXPECT_NE(BatchRecord::StateOf(file_), state);
    std::ofstream(folder_ / "batch.json") << "{";
    EXPECT_FALSE(journal.Read());
    EXPECT_THROW(BatchJournal(folder_ / "none/batch.json").Write(record), std::runtime_error);
}

}  // namespace
