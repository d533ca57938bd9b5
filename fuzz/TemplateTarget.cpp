// The template reader: whatever it reads, written and read again, gives the same groups.
#include "FuzzSupport.h"

#include "core/materials/Templates.h"

#include <cstdlib>

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const auto groups = ReadTemplateGroups(std::string_view(reinterpret_cast<const char *>(data), size));
    if (!groups)
        return 0;
    bool plain = true; // names and members that hold a line end or a brace can't come back
    for (const TemplateGroup &group : *groups) {
        for (const std::string *text = &group.Name; text; text = nullptr)
            plain = plain && text->find_first_of("\r\n{}") == std::string::npos && !text->empty();
        for (const std::string &member : group.Members)
            plain = plain && member.find_first_of("\r\n{}") == std::string::npos && !member.empty();
    }
    if (!plain)
        return 0;
    const auto again = ReadTemplateGroups(TemplateText(*groups));
    if (!again || again->size() != groups->size())
        std::abort();
    for (size_t i = 0; i < groups->size(); ++i)
        if ((*again)[i].Name != (*groups)[i].Name || (*again)[i].Members != (*groups)[i].Members)
            std::abort();
    return 0;
}
