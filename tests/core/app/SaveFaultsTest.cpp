// Every writer of the program against the faults a save meets: the previous file
// stays byte for byte, nothing is left beside it, and the user learns which file
// failed and why. Then what a save keeps: links, permissions, long names.
#include "../writer/WriterModels.h"
#include "core/app/SaveCommands.h"
#include "core/app/SettingsFile.h"
#include "core/maps/MapFinder.h"
#include "core/maps/Thumbnails.h"
#include "core/materials/TemplateEditor.h"
#include "core/materials/Templates.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/reports/HtmlReport.h"
#include "core/writer/MtlExport.h"
#include "core/writer/PoseWriter.h"
#include "support/TestHome.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace gelvane {
namespace {

using test::TestHome;
using test::WriterSession;

// What a save left: the failure text it threw or showed ("" for none), and whether it failed.
struct Outcome {
    bool failed = false;
    std::string message;
};

// Runs `save`, taking a thrown failure or the one message box it showed.
template <class Save> Outcome Observe(WriterSession &w, Save &&save) {
    const size_t before = w.ui.messages().size();
    Outcome out;
    try {
        out.failed = !save();
    } catch (const SaveFailure &failure) {
        out.failed = true;
        out.message = failure.Description;
    }
    if (w.ui.messages().size() > before)
        out.message = w.ui.messages().back().Text;
    return out;
}

struct Writer {
    const char *name;
    // Where it saves; writers of state files have a fixed place, the others take any path.
    std::string (*target)(const TestHome &home);
    bool anyName;
    // Saves; false when it reports a failure by its result.
    bool (*save)(WriterSession &w, const std::string &target);
    // Said in a box or thrown; false for the map cache, which fails quietly.
    bool tells = true;
};

std::string InHome(const TestHome &home) {
    return home.file("out/file.txt");
}

const Writer kWriters[] = {
    {"pose", InHome, true,
     [](WriterSession &w, const std::string &target) {
         w.session.OutputPath = target;
         WritePoseFile(w.session);
         return true;
     }},
    {"Save command", InHome, true,
     [](WriterSession &w, const std::string &target) {
         w.session.FileName = target;
         return mnuSave_Click(w.session) == SaveResult::Saved;
     }},
    {".mtl", InHome, true,
     [](WriterSession &w, const std::string &target) {
         WriteMtlFile(w.session, target);
         return true;
     }},
    {"report", InHome, true,
     [](WriterSession &w, const std::string &target) {
         ThumbnailCache thumbs;
         WriteHtmlReport(w.session, thumbs, target);
         return true;
     }},
    {"template", [](const TestHome &) { return TemplatePath("Faults"); }, false,
     [](WriterSession &w, const std::string &target) {
         TemplateEditor editor(w.session);
         w.ui.nextInput("Faults");
         if (FileExists(target))
             w.ui.nextAnswer(MsgResult::Yes);
         editor.mnuSaveAs_Click();
         return w.ui.messages().back().Text == "Template saved succesfully";
     }},
    {"settings", [](const TestHome &) { return SettingsFilePath(); }, false,
     [](WriterSession &, const std::string &) {
         SaveSettings(Settings{});
         return true;
     }},
    {"map cache", [](const TestHome &) { return JoinPath(MapCacheFolder(), "jpgs.txt"); }, false,
     [](WriterSession &w, const std::string &) { return SaveMapLists(w.session); }, false},
};

class SaveFaults : public testing::TestWithParam<Writer> {
protected:
    SaveFaults() {
        w.session.Figures = {test::MakeFigure("Body", {test::WhiteMaterial("Skin")})};
        w.session.Maps.JpgMaps = {MapFile{"a.jpg", "/maps"}};
        w.session.FileName = home.write("open.pz2", "{\r\n}\r\n");
        w.session.FileStatistics.FilePath = w.session.FileName;
        CreateFolder(home.file("out"));
        CreateFolder(JoinPath(home.path(), "Templates"));
        CreateFolder(MapCacheFolder());
        target = GetParam().target(home);
        // The map cache saves five lists; the others are there already.
        EXPECT_TRUE(SaveMapLists(w.session));
    }
    Outcome Save(const std::string &path) {
        return Observe(w, [&] { return GetParam().save(w, path); });
    }
    // The names in the target's folder.
    std::set<std::string> Listing() const {
        std::set<std::string> names;
        for (const auto &entry : fs::directory_iterator(fs::path(target).parent_path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    TestHome home;
    WriterSession w;
    std::string target;
};

struct Fault {
    const char *name;
    int error;
    SaveStep step;
    const char *reason;
};

TEST_P(SaveFaults, KeepThePreviousFileAndSayWhy) {
    const Fault faults[] = {
        {"disk full", ENOSPC, SaveStep::Write, "the disk is full"},
        {"read-only folder", EACCES, SaveStep::Open, "permission denied"},
        {"read-only disk", EROFS, SaveStep::Open, "the disk is read-only"},
        {"replaced while saving", 0, SaveStep::Commit, "another program replaced the file"},
        {"target is a folder", 0, SaveStep::Open, "a folder has that name"},
    };
    for (const Fault &fault : faults) {
        SCOPED_TRACE(fault.name);
        const bool folder = std::string_view(fault.name) == "target is a folder";
        const std::string previous = std::string("previous ") + fault.name + "\r\n";
        fs::remove_all(target);
        if (folder)
            fs::create_directory(target);
        else
            home.write(fs::relative(target, home.path()).string(), previous);
        const std::set<std::string> before = Listing();

        Outcome outcome;
        {
            SaveFaultScope scope([&](SaveStep step, const std::string &saving) {
                if (step != fault.step || folder)
                    return 0;
                if (fault.error == 0 && FileNamePart(saving) == FileNamePart(target)) {
                    // Another program puts its own file in place.
                    home.write("replacement", previous);
                    fs::rename(home.file("replacement"), target);
                }
                return fault.error;
            });
            outcome = Save(target);
        }
        EXPECT_TRUE(outcome.failed);
        if (folder)
            EXPECT_TRUE(fs::is_directory(target));
        else
            EXPECT_EQ(ReadFileBytes(target), previous);
        EXPECT_EQ(Listing(), before);
        if (GetParam().tells) {
            EXPECT_NE(outcome.message.find(std::string(FileNamePart(target))), std::string::npos) << outcome.message;
            EXPECT_NE(outcome.message.find(fault.reason), std::string::npos) << outcome.message;
        } else {
            EXPECT_EQ(outcome.message, "");
        }
    }
}

TEST_P(SaveFaults, KeepLinksPermissionsAndAnyName) {
    const fs::path real = fs::path(home.path()) / "real";
    fs::create_directory(real);
    const auto saves = [&](const std::string &path) {
        const Outcome outcome = Save(path);
        EXPECT_FALSE(outcome.failed) << outcome.message;
    };

    // A link is written through; a dangling one makes the file it points at.
    for (const char *pointee : {"linked.txt", "dangling.txt"}) {
        SCOPED_TRACE(pointee);
        fs::remove_all(target);
        if (std::string_view(pointee) == "linked.txt")
            home.write("real/linked.txt", "old");
        fs::create_symlink(real / pointee, target);
        saves(target);
        EXPECT_TRUE(fs::is_symlink(target));
        EXPECT_NE(ReadFileBytes((real / pointee).string()), "old");
    }

    // A replaced file keeps its permissions; a temporary file of a killed run goes.
    fs::remove_all(target);
    home.write(fs::relative(target, home.path()).string(), "old");
    fs::permissions(target, fs::perms(0640));
    const std::string stale = (fs::path(target).parent_path() / SaveTemporaryName(FileNamePart(target))).string();
    home.write(fs::relative(stale, home.path()).string(), "left by a killed run");
    const std::set<std::string> before = Listing();
    saves(target);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    EXPECT_NE(ReadFileBytes(target), "old");
    EXPECT_EQ(Listing().count(std::string(FileNamePart(stale))), 0u);
    EXPECT_EQ(Listing().size(), before.size() - 1);

    // Any name the file system takes, up to its 255 bytes.
    if (GetParam().anyName) {
        const std::string longest = home.file("out/" + std::string(251, 'n') + ".txt");
        saves(longest);
        EXPECT_TRUE(FileExists(longest));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryWriter, SaveFaults, testing::ValuesIn(kWriters),
                         [](const auto &info) { return test::TestName(info.param.name); });

} // namespace
} // namespace gelvane
