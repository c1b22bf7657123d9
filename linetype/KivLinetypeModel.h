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
// covers the row. The model never relies on KivArray's handling of a failed check: every index it
// passes to an array is valid.
#pragma once

#include <cstdint>

#include "IKivChildList.h"
#include "IKivControlSite.h"
#include "KivString.h"
#include "ORVRoots/Exp/KivArray.h"

struct KivLinetypeItem {
    KivString name;        // display name
    KivString definition;  // e.g. "A,12.7,-6.35" or "A, 12.7"; may be empty
};

class KivLinetypeModel {
public:
    enum class Placement { Sorted, Appended };

    static constexpr const char16_t* kContinuousDefinition = u"A, 12.7";  // one 12.7-pixel dash: a solid line

    KivLinetypeModel(IKivControlSite& site, Placement placement);
    virtual ~KivLinetypeModel() = default;
    KivLinetypeModel(const KivLinetypeModel&) = delete;
    KivLinetypeModel& operator=(const KivLinetypeModel&) = delete;

    // The members both dispatch interfaces have.
    long GetComboIndex() const { return currentIndex; }
    void SetComboIndex(long index);
    KivString GetSupportPath() const { return supportPath; }
    void SetSupportPath(const KivString& path) { supportPath = path; }
    KivString GetLinetypeFile() const { return linetypeFile; }
    void SetLinetypeFile(const KivString& file) { linetypeFile = file; }
    KivString GetTooltipText() const { return tooltipText; }
    void SetTooltipText(const KivString& text) { tooltipText = text; }
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

    // Fields, readable by the frame and the tests.
    KivArray<KivString> definitions;
    std::int32_t currentIndex = -1;
    KivString supportPath;
    KivString linetypeFile;
    KivString tooltipText;
    KivArray<KivLinetypeItem> items;
    KivArray<KivString> sortedNames;

protected:
    // The child list (KivNullChildList before its window exists).
    virtual IKivChildList& rows() const = 0;
    // Rebuilds the rows from the item array and completes the definition array; the sorted names
    // are left as they are (creation) or emptied (Initialize).
    void buildRows();
    IKivControlSite& site() const { return m_site; }

private:
    void insertLoadedItem(KivLinetypeItem item);
    void defineFixedRow(int row, const KivString& name, const KivString& definition);
    // Appends to the definition array the definitions of the rows it does not cover, up to `rows`.
    void completeDefinitions(int rowCount);
    static bool isFixedName(const KivString& upperName);

    IKivControlSite& m_site;
    Placement m_placement;
};
