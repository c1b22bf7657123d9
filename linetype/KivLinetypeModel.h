// KivLinetypeModel: the rows of a linetype control and every member its two controls share. Portable.
//
// It keeps, in step with the rows of the child list:
// - the item array: one (display name, definition) per row, in row order; rows 0, 1 and 2 are the
//   fixed ByLayer, ByBlock and Continuous;
// - the definition array: the definition each row is drawn with, entry k for row k;
// - the sorted name array: the names of the loaded linetypes as given, in KivString::compare order;
//   in the combo its entry k belongs to row k + 3.
// The combo inserts a loaded row at its sorted place; the list box appends it (load order).
//
// Rows and definitions stay in step also for linetypes loaded or defined before the child window
// exists: the definition array is built from the item array when the rows are built (creation,
// Initialize), for the rows it does not hold yet, and an insertion reaches it only where it already
// covers the row. A row the child refuses (no room in its list) or puts elsewhere is taken back as a
// failed allocation is, so the child's rows are always the first rows of the item array. The model
// never relies on KivArray's handling of a failed check: every index it passes to an array is valid.
// Only the model changes its arrays; drawing, tools and tests read them through const views.
#pragma once

#include <cstdint>

#include "IKivChildList.h"
#include "IKivControlSite.h"
#include "KivChildControl.h"
#include "KivString.h"
#include "ORVRoots/Exp/KivArray.h"

struct KivLinetypeItem {
    KivString name;        // display name
    KivString definition;  // e.g. "A,12.7,-6.35" or "A, 12.7"; may be empty
};

class KivLinetypeModel : public KivChildControl {
public:
    enum class Placement { Sorted, Appended };

    // Rows 0 to 2: ByLayer, ByBlock and Continuous, each defined at first as one 12.7-pixel dash (a
    // solid line).
    static constexpr int kFixedRows = 3;
    static constexpr const char16_t* kFixedRowDefinition = u"A, 12.7";

    // The rows of a control whose child `traits` describes, placed as `placement` says.
    KivLinetypeModel(IKivControlSite& site, const KivChildTraits& traits, Placement placement);

    // The members both dispatch interfaces have.
    long GetComboIndex() const { return m_currentIndex; }
    void SetComboIndex(long index);
    KivString GetSupportPath() const { return m_supportPath; }
    void SetSupportPath(const KivString& path) { m_supportPath = path; }
    KivString GetLinetypeFile() const { return m_linetypeFile; }
    void SetLinetypeFile(const KivString& file) { m_linetypeFile = file; }
    KivString GetTooltipText() const { return m_tooltipText; }
    void SetTooltipText(const KivString& text) { m_tooltipText = text; }
    void Initialize();
    void RemoveAll();
    void LoadLinetype(const KivString& name);
    void DefineLinetype(const KivString& name, const KivString& definition);
    KivString SelectItemAt(long idx) const;
    void DefineLinetypeByLayer(const KivString& name, const KivString& definition) { defineFixedRow(0, name, definition); }
    void DefineLinetypeByBlock(const KivString& name, const KivString& definition) { defineFixedRow(1, name, definition); }
    void DefineLinetypeContinuous(const KivString& name, const KivString& definition) { defineFixedRow(2, name, definition); }
    KivString SelectItem(const KivString& name);
    long GetCount() const;
    void UnloadLinetype(const KivString& name);

    // The name the events carry for a row: "ByLayer", "ByBlock" and "Continuous" for rows 0 to 2
    // whatever their display names (kept: hosts compare these words), else the row's display name.
    KivString eventName(int row) const;
    // The definition row `row` is drawn with (empty when the array does not cover it).
    KivString definitionOf(int row) const;
    // "DASHED" and "dashed" both show as "Dashed".
    static KivString displayName(const KivString& name);
    // The file LoadLinetype reads.
    KivString linetypePath() const;

    // Read-only views of the arrays (tools draw and explain rows with them, tests check them).
    const KivArray<KivLinetypeItem>& items() const { return m_items; }
    const KivArray<KivString>& definitions() const { return m_definitions; }
    // Empty in the list box, which places rows by load order and never needs them.
    const KivArray<KivString>& sortedNames() const { return m_sortedNames; }

protected:
    // The current index := the child's selection.
    int takeSelection();

private:
    // The child's rows as Initialize builds them; the sorted names of linetypes loaded before the
    // window existed stay, so later loads keep their order.
    void fillChild() override { buildRows(); }
    int storedSelection() const override { return m_currentIndex; }
    // Rebuilds the rows from the item array and completes the definition array; the sorted names
    // are left as they are (creation) or emptied (Initialize).
    void buildRows();
    void insertLoadedItem(KivLinetypeItem item);
    // The sorted names with `name` added, and its row (k + 3 for the first equal entry k); -1 when
    // there was no memory for it.
    int sortIn(const KivString& name);
    void takeSortedNameBack(const KivString& name);
    void defineFixedRow(int row, const KivString& name, const KivString& definition);
    // Appends to the definition array the definitions of the rows it does not cover, up to `rows`.
    void completeDefinitions(int rowCount);

    Placement m_placement;
    KivArray<KivString> m_definitions;
    std::int32_t m_currentIndex = -1;
    KivString m_supportPath;
    KivString m_linetypeFile;
    KivString m_tooltipText;
    KivArray<KivLinetypeItem> m_items;
    KivArray<KivString> m_sortedNames;
};
