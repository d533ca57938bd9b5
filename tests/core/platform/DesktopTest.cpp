#include "core/platform/Desktop.h"
#include "support/ScopedEnv.h"
#include "support/SessionFixture.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace gelvane {
namespace {

using test::ScriptedInteraction;
using test::TestHome;

// Waits a little for a file that a detached process writes.
std::string AwaitFile(const TestHome &home, const std::string &relative) {
    for (int i = 0; i < 200; ++i) {
        const std::string text = home.read(relative);
        if (!text.empty() && text.back() == '\n')
            return text;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return home.read(relative);
}

std::string FakeWine(const TestHome &home) {
    const std::string wine = home.write("bin/wine", "#!/bin/sh\necho \"$@\" > \"${0%/*}/../started.txt\"\n");
    std::filesystem::permissions(wine, std::filesystem::perms::owner_all);
    return wine;
}

TEST(StartDetached, StartsWithoutWaitingAndReportsAMissingProgram) {
    TestHome home;
    ASSERT_TRUE(StartDetached({"/bin/sh", "-c", "sleep 0.2; echo done > '" + home.file("out.txt") + "'"}));
    EXPECT_EQ(home.read("out.txt"), ""); // not waited for
    EXPECT_EQ(AwaitFile(home, "out.txt"), "done\n");

    int error = 0;
    EXPECT_FALSE(StartDetached({home.file("no-such-program")}, &error));
    EXPECT_EQ(error, ENOENT);
    EXPECT_FALSE(StartDetached({}, &error));
}

TEST(RunPoser, StartsPoserExeThroughWineOrSaysWhatIsMissing) {
    TestHome home;
    FakeWine(home);
    const auto run = [&](const char *bin) {
        const test::ScopedEnv path("PATH", home.file(bin)); // the folder alone
        ScriptedInteraction ui;
        RunPoser(home.file("Poser"), ui);
        return ui.messages();
    };
    const test::RecordedMessage missing{"Poser executable could not be found in\r\n" + home.file("Poser") + ".",
                                        "Gelvane", MsgIcon::Exclamation, MsgButtons::OK};
    EXPECT_EQ(run("bin"), std::vector{missing});
    home.write("Poser/poser.exe", "MZ");
    EXPECT_EQ(run("empty-bin"), std::vector{missing}); // no wine on the path
    EXPECT_EQ(home.read("started.txt"), "");
    EXPECT_TRUE(run("bin").empty());
    EXPECT_EQ(AwaitFile(home, "started.txt"), home.file("Poser/poser.exe") + "\n");
}

} // namespace
} // namespace gelvane
