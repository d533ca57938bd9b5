#pragma once
// A session that opens a file of the test data the way the Open command does,
// with the Poser folder beside it, for the report tests.
#include "core/app/OpenCommands.h"
#include "core/maps/Thumbnails.h"
#include "core/reports/FileStatistics.h"
#include "support/SessionFixture.h"

namespace gelvane::test {

// Dates stand still in the golden pages.
inline std::string FixedDate(const std::string &) {
    return "2001-02-03 04:05:06";
}

struct ReportFixture : TestSession {
    ThumbnailCache thumbs;
    TestHome home;

    // Opens `path` (absolute, or relative to the test data); Poser's folder is `poserFolder`, or
    // else the file's own. Thumbnails are off on the main window: the report decodes what it needs.
    void Open(const std::string &path, int kind = KindPZ2, const std::string &poserFolder = {}) {
        const std::string full = path.starts_with("/") ? path : std::string(GELVANE_TEST_DATA) + "/" + path;
        settings.PoserFolder = poserFolder.empty() ? full.substr(0, full.find_last_of('/')) : poserFolder;
        settings.AutoCorrect = false;
        settings.MainThumb = false;
        session.CommandLineOpen = true;
        session.DialogFileName = full;
        OpenCommand(session, kind);
    }
};

} // namespace gelvane::test
