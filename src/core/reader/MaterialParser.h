#pragma once
// Reading one material block of a Poser file into a Material of the model, and the
// customMaterial blocks of body parts. Keywords carry their trailing blank; searches
// are case-sensitive and take the first occurrence in the block. Failures (a value
// line without a line end behind it, a colour component that overflows 16 bits)
// pass to the caller.
#include "core/model/Session.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace gelvane {

class WorkLimit;

// A number line of a block, in the unit the model keeps; 0 when the keyword is missing.
int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword);
// The rest of a keyword's line without double quotes and control characters; empty when missing.
std::string ReadText(Session &session, std::string_view block, std::string_view keyword);
// Stores the colour of "KdColor ", "KaColor ", "KsColor " or "ReflectionColor " in the material.
void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex);
// Fills Figures[figureIndex].Materials[materialIndex] (which must exist, flags False) from `block`.
void ParseMaterial(Session &session, std::string_view block, int figureIndex, int materialIndex);
// Reads the material blocks of one text as ParseMaterial reads each block alone. Blocks
// that overlap (a "material " that stands inside another material's block) share their
// keyword lines: each line is found and converted once, not once for every block it
// lies in. Every block must end where the first "}" behind its start is (or the text
// ends), so that blocks sharing a line share its end; starts that go back cost a search.
class MaterialScan {
public:
    // The map references copied into the materials are spent from `work`.
    MaterialScan(Session &session, std::string_view text, WorkLimit &work);
    ~MaterialScan();
    // The block text[from, end) (0-based).
    void Parse(size_t from, size_t end, int figureIndex, int materialIndex);

private:
    struct Places;
    Session &m_session;
    std::string_view m_text;
    WorkLimit &m_work;
    std::unique_ptr<Places> m_places;
};

// Appends one Figure holding the materials of the first customMaterial of `text`; the
// caller names it.
void ReadCustomMaterials(Session &session, std::string_view text);

} // namespace gelvane
