#include "core/writer/MtlExport.h"

#include "core/maps/MapPaths.h"
#include "core/model/Numbers.h"
#include "core/platform/OutputFile.h"
#include "core/writer/WriterValues.h"

namespace gelvane {

void WriteMtlMaterials(const Session &session, int figureIndex, LineWriter &out) {
    for (const Material &m : session.Figures[static_cast<size_t>(figureIndex)].Materials) {
        if (m.Omit)
            continue;
        out.Line(0, "newmtl ", m.Name);
        if (m.NsExponentEnabled)
            out.Line(0, "Ns ", NumberText(101 - m.NsExponent));
        if (m.KaColorEnabled)
            out.Line(0, "Ka ", ColourText(m.KaColor));
        if (m.KdColorEnabled)
            out.Line(0, "Kd ", ColourText(m.KdColor));
        if (m.KsColorEnabled)
            out.Line(0, "Ks ", ColourText(m.KsColor));
        if (IsConnectedMap(m.textureMapEnabled, m.textureMap))
            out.Line(0, "map_Kd ", MapFileName(m.textureMap));
        if (IsConnectedMap(m.bumpMapEnabled, m.bumpMap))
            out.Line(0, "map_Bump ", MapFileName(m.bumpMap));
    }
}

void WriteMtlFile(const Session &session, const std::string &path) {
    OutputFile file(path);
    LineWriter out("\r\n", file);
    for (size_t i = 0; i < session.Figures.size(); ++i)
        WriteMtlMaterials(session, static_cast<int>(i), out);
    out.flush();
    file.commit();
}

} // namespace gelvane
