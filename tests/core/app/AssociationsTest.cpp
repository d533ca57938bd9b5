#include "core/app/Associations.h"

#include "core/platform/Paths.h"
#include "core/platform/Process.h"
#include "support/ScopedEnv.h"
#include "support/SessionFixture.h"

#include <filesystem>

namespace gelvane {
namespace {

using test::ScopedEnv;

std::string Output(const std::vector<std::string> &argv) {
    std::string out;
    EXPECT_EQ(RunProcess(argv, &out), 0) << argv[0];
    while (!out.empty() && out.back() == '\n')
        out.pop_back();
    return out;
}

bool IsExecutable(const std::string &path) {
    using std::filesystem::perms;
    std::error_code ec;
    return (std::filesystem::status(path, ec).permissions() & perms::owner_exec) != perms::none;
}

// Everything happens under a temporary XDG_DATA_HOME and XDG_CONFIG_HOME, on the
// desktop-neutral path of the xdg tools.
class AssociationsTest : public ::testing::Test {
protected:
    std::string Data(const std::string &relative) const { return home.file("data/" + relative); }
    void ExpectValid(const std::string &entry) {
        std::string report;
        EXPECT_EQ(RunProcess({"desktop-file-validate", entry}, &report), 0) << entry << ": " << report;
        EXPECT_EQ(report, "") << entry;
    }

    test::TestHome home;
    ScopedEnv data{"XDG_DATA_HOME", home.file("data")};
    ScopedEnv config{"XDG_CONFIG_HOME", home.file("config")};
    ScopedEnv desktop{"XDG_CURRENT_DESKTOP", "X-Generic"};
    const std::string exe = GELVANE_EXECUTABLE;
};

TEST_F(AssociationsTest, RegistersPerUserAndRemovesOnlyWhatItInstalled) {
    const std::string others = "[Default Applications]\ntext/plain=editor.desktop;\n"
                               "application/x-poser-prop=other.desktop;\n\n[Added Associations]\n"
                               "application/x-poser-character=other.desktop;\n";
    home.write("config/mimeapps.list", others);
    home.write("data/nautilus/.used", ""); // this user's desktop has Nautilus
    Associate(".cr2", exe, false);
    Associate(".PZ2", exe, false);

    EXPECT_TRUE(IsAssociated(".cr2") && IsAssociated(".pz2") && !IsAssociated(".pp2"));
    ExpectValid(Data("applications/gelvane.desktop"));
    ExpectValid(Data("applications/gelvane-matpose.desktop"));
    const std::string verb = home.read("data/applications/gelvane-matpose.desktop");
    EXPECT_NE(verb.find("Exec=" + exe + " -s %f\n"), std::string::npos);
    EXPECT_NE(verb.find("MimeType=application/x-poser-character;\n"), std::string::npos); // no pose
    for (const char *file : {"kio/servicemenus/gelvane-matpose.desktop", "nautilus/scripts/Create MAT pose"})
        EXPECT_TRUE(IsExecutable(Data(file))) << file;
    for (const char *file : {"mimetypes/application-x-poser-character.svg", "apps/gelvane.svg"})
        EXPECT_TRUE(FileExists(Data(std::string("icons/hicolor/scalable/") + file))) << file;

    // Any case of the extension; a real camera raw picture keeps its type.
    const std::string character =
        home.write("files/Figure.CR2", "{\r\n\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\n}\r\n");
    const std::string raw = home.write("files/IMG_0001.cr2", std::string("II*\0\x10\0\0\0CR\x02\0", 12) + "\0\0\0\0");
    const std::string pose = home.write("files/Wave.Pz2", "{\r\n}\r\n");
    {
        // As a file manager that reads the shared MIME database sees them (GLib's).
        ScopedEnv gnome{"XDG_CURRENT_DESKTOP", "GNOME"};
        EXPECT_EQ(Output({"xdg-mime", "query", "filetype", character}), "application/x-poser-character");
        EXPECT_EQ(Output({"xdg-mime", "query", "filetype", raw}), "image/x-canon-cr2");
        EXPECT_EQ(Output({"xdg-mime", "query", "filetype", pose}), "application/x-poser-pose");
    }

    Associate(".cr2", exe, true);
    EXPECT_TRUE(!IsAssociated(".cr2") && IsAssociated(".pz2"));
    // Poses get no verb.
    for (const char *file : {"applications/gelvane-matpose.desktop", "kio/servicemenus/gelvane-matpose.desktop",
                             "nautilus/scripts/Create MAT pose"})
        EXPECT_FALSE(FileExists(Data(file))) << file;
    Associate(".pz2", exe, true);
    EXPECT_FALSE(IsAssociated(".pz2"));
    for (const char *file :
         {"applications/gelvane.desktop", "mime/packages/gelvane.xml", "icons/hicolor/scalable/apps/gelvane.svg"})
        EXPECT_FALSE(FileExists(Data(file))) << file;
    // The other programs' entries are all still there, as they were.
    EXPECT_EQ(home.read("config/mimeapps.list"), others);
}

TEST_F(AssociationsTest, PackageEntryAndPathsThatNeedQuotingAreValid) {
    home.write("data/applications/plain.desktop", DesktopEntryText("gelvane", {}));
    ExpectValid(Data("applications/plain.desktop"));
    const std::string spaced = DesktopEntryText("/opt/My Apps/gel$vane", {"application/x-poser-pose"});
    EXPECT_NE(spaced.find("Exec=\"/opt/My Apps/gel\\\\$vane\" %f\n"), std::string::npos);
    home.write("data/applications/spaced.desktop", spaced);
    ExpectValid(Data("applications/spaced.desktop"));
}

} // namespace
} // namespace gelvane
