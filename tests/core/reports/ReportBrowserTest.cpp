// The report as a browser shows it: Chromium renders the page headless, and a
// script added to a copy of it lists how large each picture loaded.
#include "ReportFixture.h"
#include "core/reports/HtmlReport.h"

#include "core/model/Text.h"
#include "core/platform/Paths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>

using namespace gelvane;
using namespace gelvane::test;

namespace {

// Appends "<pre>IMAGES{src=WxH|...}</pre>" once the page has loaded; split so that
// the script's own text doesn't read as the result.
constexpr const char *kImageList =
    "<script>window.addEventListener('load', function () {\r\n"
    "  var sizes = Array.from(document.images,\r\n"
    "      i => i.getAttribute('src') + '=' + i.naturalWidth + 'x' + i.naturalHeight);\r\n"
    "  document.body.insertAdjacentHTML('beforeend', '<pre>IMAGES' + '{' + sizes.join('|') + '}</pre>');\r\n"
    "});</script>\r\n";

// The document after loading, as headless Chromium dumps it; empty when it can't run.
std::string RenderedDom(const std::string &page, const std::string &profile) {
    const std::string command = "timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic "
                                "--no-first-run --disable-background-networking --disable-component-update "
                                "--disable-sync --user-data-dir='" +
                                profile + "' --dump-dom '" + page + "' 2>/dev/null";
    std::string dom;
    if (std::FILE *pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
            dom.append(buffer, n);
        pclose(pipe);
    }
    return dom;
}

} // namespace

TEST(ReportBrowser, EveryPictureLoadsInChromium) {
    ReportFixture f;
    f.ui.nextAnswer(MsgResult::No); // no morphs: the maps are what the page shows
    f.Open(std::string(GELVANE_SOURCE_DIR) + "/examples/Runtime/Libraries/Character/Demo/Gelvane Mannequin.cr2",
           KindCR2, std::string(GELVANE_SOURCE_DIR) + "/examples");
    // Blanks, a non-ASCII letter and "#" in the name: the addresses must still find the pictures.
    ASSERT_TRUE(CreateFolder(f.home.file("My Reports")));
    const std::string page = f.home.file("My Reports/Mannequin Caf\xC3\xA9 #1.htm");
    WriteHtmlReport(f.session, f.thumbs, page);
    const std::string html = ReadFileBytes(page);
    const std::string check =
        f.home.write("My Reports/check.htm", Replace(html, "</body>", kImageList + std::string("</body>")));

    const std::string dom = RenderedDom(check, f.home.file("chromium-profile"));
    std::smatch found;
    ASSERT_TRUE(std::regex_search(dom, found, std::regex("<pre>IMAGES\\{([^}]*)\\}</pre>")))
        << "Chromium rendered nothing; scripts/setup installs it. Output:\n"
        << dom.substr(0, 2000);
    const std::string prefix = "Mannequin Caf%C3%A9 %231_Images\\";
    EXPECT_EQ(found[1].str(), prefix + "thumbnail.jpg=100x100|" + prefix + "tex 0.jpg=100x100|" + prefix +
                                  "tex 1.jpg=100x100|" + prefix + "bump 0.jpg=100x100");
    EXPECT_NE(html.find("File not found"), std::string::npos); // the missing eye texture
}
