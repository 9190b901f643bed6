#include "ombrel/graph3d/objects/ObjectProperty.h"

namespace ombrel {

bool ObjectProperty::ReadDivisions(int least, int most, int& into) const
{
    std::array<int, 1> count {};
    if (!Read(count))
        return false;
    if (count[0] < least || count[0] > most) {
        CString expected;
        expected.Format("a number from %d to %d", least, most);
        CString found;
        found.Format("%d", count[0]);
        file.Fail(CString("The number of ") + name + CString(" is out of range"), expected, found);
    }
    into = count[0];
    return true;
}

} // namespace ombrel
