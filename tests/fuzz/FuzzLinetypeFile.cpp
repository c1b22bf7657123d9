// Fuzz target: LoadLinetype on any file bytes and names, in the combo or the list control (an input
// of even length: the combo) over an in-memory child list, then every row drawn, a selection and an
// unload. The input is the file's bytes; after a last zero byte, if any, come up to two names (one
// per line) to load besides the file's first four headers. The child's rows must stay the
// control's rows, and every row's drawing must put back the pen it selected.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "CountingDC.h"
#include "FakeComboBox.h"
#include "FuzzSupport.h"
#include "RecordingSite.h"

namespace {

template <class Control, class Utl>
void drawEveryRow(const Control& ctrl, const Utl& utl, FakeComboBox& box) {
    const int count = static_cast<int>(box.count());
    for (int row = -1; row < count && row < 64; ++row) {
        CountingDC dc;
        KivDrawItem item;
        item.itemID = row;
        item.itemState = row == 0 ? 0x0011u : 0u;  // selected and focused, then plain
        item.rcItem = KivRect{0, 16 * (row + 1), 180, 16 * (row + 2)};
        utl.DrawItem(dc, item);
        if (dc.pens != 0) kivfuzz::broken("a row's pen was not put back");
    }
    if (box.count() != ctrl.items().getLogicalLength()) kivfuzz::broken("the child's rows are not the control's");
}

template <class Control, class Utl>
void exercise(Control& ctrl, const Utl& utl, FakeComboBox& box, const KivString& folder, const std::vector<KivString>& names) {
    ctrl.SetSupportPath(folder);
    ctrl.SetLinetypeFile(KivString(u"fuzz.lin"));
    for (const KivString& name : names) ctrl.LoadLinetype(name);
    if (!names.empty()) ctrl.SelectItem(names.front());
    drawEveryRow(ctrl, utl, box);
    if (!names.empty()) {
        ctrl.UnloadLinetype(names.back());
        drawEveryRow(ctrl, utl, box);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static kivfuzz::ScratchFolder folder;
    std::size_t contentSize = size;
    std::vector<KivString> names;
    for (std::size_t i = size; i > 0; --i) {
        if (data[i - 1] != 0) continue;
        contentSize = i - 1;
        std::size_t start = i;
        for (std::size_t j = i; j <= size && names.size() < 2; ++j)
            if (j == size || data[j] == '\n') {
                names.push_back(kivfuzz::latin1(data + start, j - start));
                start = j + 1;
            }
        break;
    }
    for (const KivString& n : kivfuzz::headerNames(data, contentSize, 4)) names.push_back(n);
    folder.write("fuzz.lin", data, contentSize);

    RecordingSite site;
    FakeComboBox box;
    if (size % 2 == 0) {
        CKivLinetypeCtrl combo(site);
        combo.OnCreate(box, 21);
        exercise(combo, combo.comboBox, box, folder.path(), names);
    } else {
        CKivLinetypeListCtrl list(site);
        list.OnCreate(box);
        exercise(list, list.listBox, box, folder.path(), names);
    }
    return 0;
}
