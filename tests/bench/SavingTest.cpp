#include "BenchFixture.h"

#include "drawing/properties/PropertiesReader.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace zv::bench {

namespace {

namespace fs = std::filesystem;

/// Work goes to files by typed commands.
class Saving : public BenchFixture {
protected:
    Saving() { static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0})); }

    bool wasTold(const std::string& text) const
    {
        return std::any_of(history.begin(), history.end(),
                           [&](const std::string& each) { return each.find(text) != std::string::npos; });
    }
    /// A saved drawing with a circle, open.
    std::string makePlan()
    {
        const std::string path = folder.file("Plan.dwg");
        line.type("CIRCLE 0,0 1 SAVEAS\r" + path + "\r");
        EXPECT_EQ(drawing().path(), path) << history.back();
        return path;
    }
};

TEST_F(Saving, WhatWasSavedIsOpenedWorkedOnAndSavedAgain)
{
    const std::string path = folder.file("Plan.dwg");
    line.type("NEW\rCIRCLE 0,0 1 SAVEAS\r" + path + "\rCLOSE\r");
    for (std::size_t round = 2; round < 6; ++round) {
        line.type("OPEN\r" + path + "\rCIRCLE 3,3 " + std::to_string(round) + " .DWGPROPS\rQSAVE\r");
        EXPECT_FALSE(drawing().isModified()) << history.back();
        line.type("CLOSE\r");
        const auto again = BenchDrawing::load(path);
        ASSERT_TRUE(again);
        EXPECT_EQ((*again)->modelSpace().entities.size(), round);
        EXPECT_EQ((*again)->properties().comments, u"edited");
        EXPECT_EQ((*again)->outlook().way, SaveWay::Whole) << (*again)->outlook().reason;
    }
}

TEST_F(Saving, PreviewIsKept)
{
    dwg::WriteOptions options;
    options.preview.emplace().width = 8;
    options.preview->height = 4;
    options.preview->bgra.assign(8 * 4 * 4, 0x55);
    const std::string path =
        folder.write("Seen.dwg", dwg::writeDocument(emptyDocument(), options).valueOr(""));
    line.type("OPEN\r" + path + "\rCIRCLE 0,0 1 QSAVE\r");
    EXPECT_FALSE(drawing().isModified()) << history.back();
    const std::string bytes = folder.read("Seen.dwg");
    const auto previews = dwg::readPreviews(MemorySource(std::as_bytes(std::span(bytes))));
    ASSERT_TRUE(previews);
    ASSERT_EQ(previews->size(), 1U);
    EXPECT_EQ(previews->front().width, 8);
}

TEST_F(Saving, SaveAsAsksBeforeItReplaces)
{
    const std::string taken = folder.write("Taken.dwg", "old");
    line.type("CIRCLE 0,0 1 SAVEAS\r" + taken + "\r");
    EXPECT_EQ(prompt(), taken + " already exists. Do you want to replace it? <N>");
    line.type("\r");
    EXPECT_EQ(folder.read("Taken.dwg"), "old");
    EXPECT_TRUE(drawing().isModified());
    line.type("SAVEAS\r" + taken + "\rY\r");
    EXPECT_NE(folder.read("Taken.dwg"), "old");
    EXPECT_FALSE(drawing().isModified());
}

TEST_F(Saving, SaveAsRefusesAFileOfAnotherTab)
{
    const std::string path = makePlan();
    const std::string before = folder.read("Plan.dwg");
    line.type("NEW\rLINE 0,0 1,1 \rSAVEAS\r" + path + "\r");
    EXPECT_TRUE(wasTold(path + " is open in another tab."));
    EXPECT_TRUE(line.isIdle());
    EXPECT_EQ(folder.read("Plan.dwg"), before);
    EXPECT_TRUE(drawing().isModified());
}

TEST_F(Saving, SaveAsInADialogStartsFromTheDrawingsName)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{1}));
    chosenFile = folder.file("Chosen.dwg");
    line.type("CIRCLE 0,0 1 SAVEAS\r");
    EXPECT_EQ(suggestedFile, "Drawing1.dwg");
    EXPECT_EQ(drawing().path(), chosenFile);
}

TEST_F(Saving, ClosingUnsavedWorkAsks)
{
    line.type("CIRCLE 0,0 1 CLOSE\r");
    EXPECT_EQ(askedFor, std::vector<std::string>{"Drawing1.dwg"});
    EXPECT_EQ(workshop.drawings().size(), 1U) << "Cancel keeps it open";
    keep = Keep::Save;
    chosenFile = folder.file("Kept.dwg");
    line.type("CLOSE\r");
    EXPECT_TRUE(workshop.drawings().empty());
    EXPECT_TRUE(fileExists(chosenFile));
}

TEST_F(Saving, ClosingWithoutSavingLeavesTheFile)
{
    const std::string path = makePlan();
    const std::string before = folder.read("Plan.dwg");
    keep = Keep::Discard;
    line.type("CIRCLE 0,0 2 CLOSE\r");
    EXPECT_TRUE(workshop.drawings().empty());
    EXPECT_EQ(folder.read("Plan.dwg"), before);
}

TEST_F(Saving, NewAndOpenInTheSingleModeAsk)
{
    const std::string other = makeBolt();
    line.type("SDI 1 CIRCLE 0,0 1 NEW\r");
    EXPECT_EQ(askedFor.size(), 1U);
    EXPECT_EQ(entities().size(), 1U);
    askedFor.clear();
    line.type("OPEN\r" + other + "\r");
    EXPECT_EQ(askedFor.size(), 1U);
    EXPECT_EQ(entities().size(), 1U);
    keep = Keep::Discard;
    line.type("NEW\r");
    EXPECT_TRUE(entities().empty());
    EXPECT_EQ(workshop.drawings().size(), 1U);
}

TEST_F(Saving, ReadOnlyFileIsToldAndAnotherNameOffered)
{
    const std::string path = makePlan();
    fs::permissions(path, fs::perms::owner_read);
    const std::string before = folder.read("Plan.dwg");
    line.type("CIRCLE 0,0 2 QSAVE\r");
    EXPECT_TRUE(wasTold(path + " is read-only"));
    EXPECT_EQ(prompt(), "Save under another name? [Yes/No] <Yes>:");
    line.type("\r" + folder.file("Other.dwg") + "\r");
    EXPECT_FALSE(drawing().isModified());
    EXPECT_EQ(drawing().path(), folder.file("Other.dwg"));
    EXPECT_EQ(folder.read("Plan.dwg"), before);
}

TEST_F(Saving, FileThatAnotherProgramChangedIsNotWrittenOver)
{
    const std::string path = makePlan();
    folder.write("Plan.dwg", "of another program");
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(5));
    line.type("CIRCLE 0,0 2 QSAVE\r");
    EXPECT_TRUE(wasTold("was changed by another program meanwhile"));
    EXPECT_EQ(folder.read("Plan.dwg"), "of another program");
    line.type("N\r");
    EXPECT_TRUE(line.isIdle());
    EXPECT_TRUE(drawing().isModified());
}

TEST_F(Saving, FileThatIsGoneIsToldAndCanBeSavedAgain)
{
    const std::string path = makePlan();
    fs::remove(path);
    line.type("CIRCLE 0,0 2 QSAVE\r");
    EXPECT_TRUE(wasTold(path + " is not there any more"));
    line.type("Y\r" + path + "\r");
    EXPECT_TRUE(fileExists(path));
    EXPECT_FALSE(drawing().isModified());
}

TEST_F(Saving, ModeOfTheFileIsKeptAndALinkStaysOne)
{
    const std::string path = makePlan();
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(path, mode);
    const std::string link = folder.file("Link.dwg");
    std::error_code refused;
    fs::create_symlink(path, link, refused);
    if (refused)
        GTEST_SKIP() << "no link can be made here: " << refused.message();
    keep = Keep::Discard;
    line.type("CLOSE\rOPEN\r" + link + "\rCIRCLE 0,0 2 QSAVE\r");
    EXPECT_FALSE(drawing().isModified()) << history.back();
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(path).permissions(), mode);
    EXPECT_EQ((*BenchDrawing::load(path))->modelSpace().entities.size(), 2U);
}

TEST_F(Saving, AFileByAnotherPathIsTheSameDrawing)
{
    const std::string path = makePlan();
    const std::string link = folder.file("Link.dwg");
    std::error_code refused;
    fs::create_symlink(path, link, refused);
    if (refused)
        GTEST_SKIP() << "no link can be made here: " << refused.message();
    for (const std::string& other : {link, folder.file("./Plan.dwg")}) {
        line.type("OPEN\r" + other + "\r");
        EXPECT_EQ(workshop.drawings().size(), 1U) << other;
    }
}

TEST_F(Saving, WhatNoFileCanTakeIsListedAndAskedAbout)
{
    dwg::Entity strange = newEntity(drawing().document(), "ACIDBLOB", dwg::Unknown{}, 0);
    drawing().beginChange();
    entities().push_back(strange);
    const std::string path = folder.file("Plan.dwg");
    line.type("CIRCLE 0,0 1 SAVEAS\r" + path + "\r");
    EXPECT_TRUE(wasTold("1 ACIDBLOB"));
    EXPECT_EQ(prompt(), "Save all the same? [Yes/No] <No>:");
    line.type("\r");
    EXPECT_FALSE(fileExists(path));
    EXPECT_TRUE(drawing().isModified());
    line.type("SAVEAS\r" + path + "\rY\r");
    EXPECT_TRUE(fileExists(path));
    EXPECT_EQ(entities().size(), 1U);
}

TEST_F(Saving, AWriteThatFailsIsToldAndAnotherNameOffered)
{
    const std::string path = makePlan();
    const std::string before = folder.read("Plan.dwg");
    // A folder in the place of the copy that is written first.
    fs::create_directories(path + ".sv$/x");
    line.type("CIRCLE 0,0 2 QSAVE\r");
    EXPECT_TRUE(wasTold("Not saved: "));
    EXPECT_EQ(prompt(), "Save under another name? [Yes/No] <Yes>:");
    EXPECT_EQ(folder.read("Plan.dwg"), before);
    line.type("\r" + folder.file("no such folder/Other.dwg") + "\r");
    EXPECT_EQ(prompt(), "Save under another name? [Yes/No] <Yes>:");
    EXPECT_TRUE(drawing().isModified());
    line.type("\r" + folder.file("Other.dwg") + "\r");
    EXPECT_TRUE(line.isIdle());
    EXPECT_FALSE(drawing().isModified());
    EXPECT_EQ(drawing().path(), folder.file("Other.dwg"));
}

TEST_F(Saving, AFileThatIsGoneIsToldAlsoWhereNothingWasChanged)
{
    const std::string path = makePlan();
    fs::remove(path);
    line.type("QSAVE\r");
    EXPECT_TRUE(wasTold(path + " is not there any more"));
    line.type("Y\r" + path + "\r");
    EXPECT_TRUE(fileExists(path));
}

TEST_F(Saving, AFileThatWasChangedWithItsTimeKeptIsNotWrittenOver)
{
    const std::string path = makePlan();
    const auto time = fs::last_write_time(path);
    folder.write("Plan.dwg", "of another program");
    fs::last_write_time(path, time);
    line.type("CIRCLE 0,0 2 QSAVE\r");
    EXPECT_EQ(folder.read("Plan.dwg"), "of another program");
}

TEST_F(Saving, AFileThatIsMadeWhileAQuestionStandsIsAskedAbout)
{
    drawing().beginChange();
    entities().push_back(newEntity(drawing().document(), "ACIDBLOB", dwg::Unknown{}, 0));
    const std::string path = folder.file("Plan.dwg");
    line.type("SAVEAS\r" + path + "\r");
    EXPECT_EQ(prompt(), "Save all the same? [Yes/No] <No>:");
    folder.write("Plan.dwg", "of another program");
    line.type("Y\r");
    EXPECT_EQ(prompt(), path + " already exists. Do you want to replace it? <N>");
    EXPECT_EQ(folder.read("Plan.dwg"), "of another program");
    line.type("Y\r");
    EXPECT_TRUE(line.isIdle()) << "what was agreed to is not asked again";
    EXPECT_NE(folder.read("Plan.dwg"), "of another program");
}

TEST_F(Saving, ANameFromADialogThatGetsItsEndingHereIsAskedAbout)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{1}));
    folder.write("Plan.txt.dwg", "old");
    chosenFile = folder.file("Plan.txt");
    line.type("CIRCLE 0,0 1 SAVEAS\r");
    EXPECT_EQ(prompt(), chosenFile + ".dwg already exists. Do you want to replace it? <N>");
    EXPECT_EQ(folder.read("Plan.txt.dwg"), "old");
}

TEST_F(Saving, TypedNamesLieBesideTheDrawing)
{
    makePlan();
    line.type("SAVEAS\rOther\r");
    EXPECT_EQ(drawing().path(), folder.file("Other.dwg"));
    line.type("OPEN\rPlan\r");
    EXPECT_EQ(drawing().path(), folder.file("Plan.dwg"));
}

TEST_F(Saving, ClosingOffersAnotherNameWhereTheFileCannotBeWritten)
{
    const std::string path = makePlan();
    fs::permissions(path, fs::perms::owner_read);
    keep = Keep::Save;
    line.type("CIRCLE 0,0 2 CLOSE\r");
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_EQ(questions[0], "Plan.dwg was not saved:\n\n" + path + " is read-only.");
    EXPECT_EQ(workshop.drawings().size(), 1U);
    agreesToAll = true;
    chosenFile = folder.file("Other.dwg");
    line.type("CLOSE\r");
    EXPECT_TRUE(workshop.drawings().empty());
    EXPECT_EQ((*BenchDrawing::load(chosenFile))->modelSpace().entities.size(), 2U);
}

TEST_F(Saving, ClosingAsksBeforeItLeavesSomethingOut)
{
    drawing().beginChange();
    entities().push_back(newEntity(drawing().document(), "ACIDBLOB", dwg::Unknown{}, 0));
    keep = Keep::Save;
    chosenFile = folder.file("Plan.dwg");
    line.type("CLOSE\r");
    EXPECT_EQ(questions, std::vector<std::string>{chosenFile + " would not have:\n\n1 ACIDBLOB"});
    EXPECT_FALSE(fileExists(chosenFile));
    agreesToAll = true;
    line.type("CLOSE\r");
    EXPECT_TRUE(fileExists(chosenFile));
    EXPECT_TRUE(workshop.drawings().empty());
}

TEST_F(Saving, FilesThatAreNoDrawingsAreRefused)
{
    folder.write("Empty.dwg", "");
    folder.write("Bad.dwg", "AC1015");
    fs::create_directory(folder.file("Folder.dwg"));
    for (const char* name : {"Empty.dwg", "Bad.dwg", "Folder.dwg", "Missing.dwg"}) {
        history.clear();
        line.type("OPEN\r" + folder.file(name) + "\r");
        EXPECT_TRUE(wasTold(folder.file(name))) << name;
        EXPECT_EQ(workshop.drawings().size(), 1U) << name;
    }
}

} // namespace

} // namespace zv::bench
