#include "core/reports/HtmlReport.h"

#include "core/maps/MapPaths.h"
#include "core/maps/Thumbnails.h"
#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/reports/FileInfo.h"
#include "core/writer/LineWriter.h"

#include <new>
#include <optional>
#include <stdexcept>
#include <vector>

namespace gelvane {
namespace {

constexpr const char *kFontFace = "Verdana, Arial, Helvetica, sans - serif";

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    out += text;
    out += '"';
    return out;
}

// The folder name as a relative address: bytes that a browser would read as
// something else (non-ASCII names, "#", "%", "?", quotes) are percent-encoded,
// so that the picture loads whatever the page's name. Plain names stay as they are.
std::string AddressText(std::string_view name) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '%' || c == '#' || c == '?' || c == '"') {
            out += '%';
            out += kHex[byte >> 4];
            out += kHex[byte & 0x0F];
        } else {
            out += c;
        }
    }
    return out;
}

// The library thumbnail of a Poser file: the same name with the extension "png".
std::string FileThumbnailPath(std::string_view fileName) {
    std::string_view base = Left(fileName, static_cast<long long>(fileName.size()) - 4);
    if (EndsWith(base, "."))
        base.remove_suffix(1);
    return LCase(base) + ".png";
}

struct MapSection {
    const char *Heading;
    int32_t FileStatisticsRecord::*Counter;
    std::string Material::*Field;
    const char *Stem; // the picture's name in front of its number
    const char *NoMaps;
};

constexpr MapSection kSections[] = {
    {">Texture maps</font></h3>", &FileStatisticsRecord::TextureMaps, &Material::textureMap, "tex",
     "<em>No texture maps</em>"},
    {">Bump maps</font></h3>", &FileStatisticsRecord::BumpMaps, &Material::bumpMap, "bump", "<em>No bump maps</em>"},
    {">Reflection maps</font></h3>", &FileStatisticsRecord::ReflectionMaps, &Material::reflectionMap, "reflection",
     "<em>No reflection maps</em>"},
    {">Transparency maps</font></h3>", &FileStatisticsRecord::TransparencyMaps, &Material::transparencyMap,
     "transparency", "<em>No transparency maps</em>"},
};

class ReportRun {
public:
    ReportRun(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath,
              const DateTextOf &dateOf, LineWriter &out)
        : s(session), thumbs(thumbnails), dateOf(dateOf), out(out), info(FileInfoOf(session)),
          imagesFolderName(ImagesFolderName(reportPath)) {
        const std::string_view folder = FolderPart(reportPath);
        imagesFolder = folder.empty() ? imagesFolderName : std::string(folder) + "/" + imagesFolderName;
    }

    void Run() {
        WriteHead();
        WriteTitle();
        WriteStatistics();
        for (const MapSection &section : kSections)
            WriteSection(section);
        out.Line(0, "</font>");
        out.Line(0, "</body>");
        out.Line(0, "</html>");
    }

private:
    void WriteHead() {
        out.Line(0, "<!DOCTYPE HTML PUBLIC ", Quoted("-//W3C//DTD HTML 4.01 Transitional//EN"), ">");
        out.Line(0, "<html>");
        out.Line(0, "<head>");
        out.Line(0, "<title>", info.lblFileName, "</title>");
        out.Line(0, "<meta http-equiv=", Quoted("Content-Type"), " content=", Quoted("text/html; charset=iso-8859-1"),
                 ">");
        out.Line(0, "</head>");
        out.Line(0, "<body text=", Quoted("#033D5B"), ">");
    }

    void WriteTitle() {
        const std::string heading =
            "<h3><font size=" + Quoted("3") + " face=" + Quoted(kFontFace) + ">" + info.lblFileName + "</font></h3>";
        const std::optional<DecodedPicture> picture = DecodePicture(FileThumbnailPath(s.FileName));
        if (!picture) {
            out.Line(0, heading);
            return;
        }
        WritePicture(PaintThumbnail(*picture), "thumbnail.jpg");
        out.Line(0, "<table width=", Quoted("400"), " border=", Quoted("0"), ">");
        out.Line(0, "  <tr>");
        out.Line(0, "    <td width=", Quoted("93"), "><img src=", Quoted(Address("thumbnail.jpg")), "></td>");
        out.Line(0, "    <td>", heading, "</td>");
        out.Line(0, "  </tr>");
        out.Line(0, "</table>");
    }

    void WriteStatistics() {
        out.Line(0, "<font size=", Quoted("2"), " face=", Quoted(kFontFace), ">");
        out.Line(0, "<table width=", Quoted("400"), " border=", Quoted("1"), ">");
        const std::pair<const char *, std::string> rows[] = {
            {"File type", info.lblFileType},
            {"Required Poser version", s.FileVersion.empty() ? std::string(kNotAvailable) : s.FileVersion},
            {"File size", info.lblSize},
            {"Creation date", dateOf(s.FileName)},
            {"No. of objects", info.lblFigures},
            {"No. of body parts", info.lblActors},
            {"No. of materials", info.lblMaterials},
            {"No. of sub-divided materials", info.lblSdMats},
            {"No. of body part and prop channels", info.lblChannels},
            {"No. of pose channels", info.lblPose},
            {"No. of morph channels", info.lblMorph},
            {"No. of null channels", info.lblNull},
        };
        for (const auto &[label, value] : rows) {
            out.Line(0, "  <tr>");
            out.Line(0, "    <td><font size=2>", label, "</font></td>");
            out.Line(0, "    <td><font size=2>", value, "</font></td>");
            out.Line(0, "  </tr>");
        }
        out.Line(0, "</table>");
    }

    void WriteSection(const MapSection &section) {
        out.Line(0, "<h3><font size=", Quoted("2"), " face=", Quoted(kFontFace), section.Heading);
        if (s.FileStatistics.*section.Counter < 1) {
            out.Line(0, section.NoMaps);
            return;
        }
        out.Line(0, "<table width=", Quoted("600"), " border=", Quoted("1"), ">");
        // The section's own maps, whichever kind the statistics counted them under.
        const std::vector<std::string> maps = DistinctMaps(s, section.Field);
        // A missing file uses up its number too.
        for (size_t row = 0; row < maps.size(); ++row)
            WriteMapRow(section, maps[row], static_cast<long long>(row));
        out.Line(0, "</table>");
    }

    void WriteMapRow(const MapSection &section, std::string_view entry, long long row) {
        out.Line(0, "  <tr>");
        // The file found, in any form of the reference: the key the page's pictures are kept under.
        const std::optional<std::string> located = LocateMapReference(s.settings().PoserFolder, entry);
        if (!located) {
            out.Line(0, "    <td width=", Quoted("93"), "><font size=2>File not found</font></td>");
            out.Line(0, "    <td><font size=2>", entry, "</li></font></td>");
            out.Line(0, "  </tr>");
            return;
        }
        const std::string &full = *located;
        // Decoded now when the page showed no thumbnail of it (or thumbnails are off).
        thumbs.LoadThumbNail(full, 0);
        const Thumbnail *picture = thumbs.Find(full, 0);
        if (!picture)
            throw Failure(ErrInvalidPicture, DescribeError(ErrInvalidPicture) + " " + std::string(entry));
        const std::string name = section.Stem + SignedText(row) + ".jpg";
        WritePicture(*picture, name);
        out.Line(0, "    <td width=", Quoted("93"), "><img src=", Quoted(Address(name)), "></td>");
        std::string dimensions = thumbs.DimensionsOf(full);
        if (dimensions.empty())
            dimensions = kNotAvailable;
        out.Line(0, "    <td><font size=2>", entry, "<br>");
        out.Line(0, "      <li>Dimensions: ", dimensions, "</li>");
        const double megabytes = static_cast<double>(FileSize(full)) / 1000000;
        out.Line(0, "      <li>File size: ", NumberText(RoundPlaces(megabytes, 2)), " MB</li>");
        out.Line(0, "      <li>Created: ", dateOf(full), "</li></font></td>");
        out.Line(0, "  </tr>");
    }

    // The picture's address from the page: the folder, a backslash, the name.
    std::string Address(const std::string &name) const { return AddressText(imagesFolderName) + "\\" + name; }

    void WritePicture(const Thumbnail &picture, const std::string &name) {
        if (!CreateFolder(imagesFolder))
            throw SaveFailure(ErrPathFileAccess, "Could not save " + imagesFolder + ": the folder can't be made");
        WriteFileAtomic(imagesFolder + "/" + name, EncodeJpeg(picture, kReportJpegQuality));
    }

    const Session &s;
    ThumbnailCache &thumbs;
    const DateTextOf &dateOf;
    LineWriter &out;
    const FileInfoTexts info;
    const std::string imagesFolderName;
    std::string imagesFolder;
};

void ReportFailure(const Session &session, int number, const std::string &description) {
    session.ui().MessageBox(description + ", error number " + std::to_string(number), kProgramTitle,
                            MsgIcon::Exclamation);
}

// Runs `work`; any failure is reported in the one box of the report. False after a failure.
template <class Work> bool ReportingFailures(const Session &session, Work &&work) {
    try {
        work();
        return true;
    } catch (const Failure &failure) {
        ReportFailure(session, failure.Number, failure.Description);
    } catch (const std::bad_alloc &) {
        ReportFailure(session, ErrOutOfMemory, DescribeError(ErrOutOfMemory));
    } catch (const std::out_of_range &) {
        ReportFailure(session, ErrSubscript, DescribeError(ErrSubscript));
    } catch (const std::exception &) {
        ReportFailure(session, ErrInternal, DescribeError(ErrInternal));
    }
    return false;
}

} // namespace

std::string ImagesFolderName(std::string_view reportPath) {
    const std::string_view name = FileNamePart(reportPath);
    return std::string(Left(name, static_cast<long long>(InStrRev(name, ".")) - 1)) + "_Images";
}

void WriteHtmlReport(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath,
                     const DateTextOf &dateOf) {
    OutputFile file(reportPath);
    LineWriter out("\r\n", file);
    ReportRun(session, thumbnails, reportPath, dateOf, out).Run();
    out.flush();
    file.commit();
}

void WriteHtmlReport(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath) {
    WriteHtmlReport(session, thumbnails, reportPath, CreationDateText);
}

bool CreateHtmlReport(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath) {
    return ReportingFailures(session, [&] { WriteHtmlReport(session, thumbnails, reportPath); });
}

void cmdCreateHTML_Click(const Session &session, ThumbnailCache &thumbnails) {
    ReportingFailures(session, [&] {
        FileDialogRequest request;
        request.ForSave = true;
        request.Title = "Save HTML file";
        request.DefaultExt = "htm";
        request.Filter = "HTML|*.htm|All files|*.*";
        request.InitialDir = session.settings().PoserFolder;
        request.FileName.clear();
        request.Flags = 0; // a page of the same name is replaced without asking
        const std::optional<std::string> chosen = session.ui().ChooseFile(request);
        if (chosen)
            WriteHtmlReport(session, thumbnails, *chosen);
    });
}

} // namespace gelvane
