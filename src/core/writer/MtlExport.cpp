#include "core/writer/MtlExport.h"

#include "core/maps/MapPaths.h"
#include "core/model/Failure.h"
#include "core/model/Numbers.h"
#include "core/platform/Interaction.h"
#include "core/writer/OutputFile.h"
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

void mnuExportMTL_Click(Session &session) {
    try {
        FileDialogRequest request;
        request.ForSave = true;
        request.DefaultExt = "mtl";
        request.Filter = "Material files|*.mtl|All files|*.*";
        request.Title = "Save material file as...";
        request.Flags = 2054; // prompt before overwriting, no read-only box, the path must exist
        request.InitialDir = session.SaveDialogInitialDir;
        session.OutputPath.clear();
        const std::optional<std::string> chosen = session.ui().ChooseFile(request);
        if (!chosen)
            Fail(ErrDialogCancelled);
        session.OutputPath = *chosen;
        OutputFile file(*chosen);
        // Material libraries always use DOS line ends, whatever the pose option says.
        LineWriter out("\r\n", file.file());
        for (size_t i = 0; i < session.Figures.size(); ++i)
            WriteMtlMaterials(session, static_cast<int>(i), out);
        out.flush();
        file.commit();
    } catch (...) {
        // Ends quietly, like the save commands.
    }
    // A later Save writes to the pose file again.
    session.OutputPath = session.FileName;
}

} // namespace gelvane
