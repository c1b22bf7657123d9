// KivLinetypeModel: the rows of a linetype control. Portable.
#include "KivLinetypeModel.h"

#include "KivLinetypeFile.h"

#include <algorithm>
#include <climits>

namespace {
KivString upper(const KivString& text) {
    KivString u = text;
    u.toUpper();
    return u;
}

int compareNames(const void* a, const void* b) {
    return KivString::compare(*static_cast<const KivString*>(a), *static_cast<const KivString*>(b));
}

// The names of rows 0 to 2, as rows show them at first and as their events always carry them.
const char16_t* const kFixedNames[KivLinetypeModel::kFixedRows] = {u"ByLayer", u"ByBlock", u"Continuous"};

// The fixed row a name stands for, any case (0 to 2), or -1.
int fixedRowNamed(const KivString& name) {
    const KivString wanted = upper(name);
    for (int row = 0; row < KivLinetypeModel::kFixedRows; ++row)
        if (upper(KivString(kFixedNames[row])) == wanted) return row;
    return -1;
}
}  // namespace

KivLinetypeModel::KivLinetypeModel(IKivControlSite& site, const KivChildTraits& traits, Placement placement)
    : KivChildControl(site, traits), m_placement(placement) {
    for (const char16_t* name : kFixedNames) m_items.append(KivLinetypeItem{KivString(name), KivString(kFixedRowDefinition)});
}

KivString KivLinetypeModel::linetypePath() const { return KivLinetypeFilePath(m_supportPath, m_linetypeFile); }

KivString KivLinetypeModel::displayName(const KivString& name) {
    if (name.length() == 0) return name;
    KivString first = name.left(1);
    KivString rest = name.right(name.length() - 1);
    return first.toUpper() + rest.toLower();
}

KivString KivLinetypeModel::eventName(int row) const {
    if (row >= 0 && row < kFixedRows) return KivString(kFixedNames[row]);
    // A row the item array does not hold (no selection: -1) has no name.
    return m_items.isValid(row) ? m_items[row].name : KivString();
}

KivString KivLinetypeModel::definitionOf(int row) const {
    return m_definitions.isValid(row) ? m_definitions[row] : KivString();
}

void KivLinetypeModel::completeDefinitions(int rowCount) {
    while (m_definitions.getLogicalLength() < rowCount && m_definitions.getLogicalLength() < m_items.getLogicalLength()) {
        const int before = m_definitions.getLogicalLength();
        m_definitions.append(m_items[before].definition);
        if (m_definitions.getLogicalLength() == before) return;  // no memory: the rest is completed later
    }
}

// ---- Rows ----

void KivLinetypeModel::buildRows() {
    list().resetContent();
    for (int i = 0; i < m_items.getLogicalLength(); ++i) list().addString(m_items[i].name);
    completeDefinitions(m_items.getLogicalLength());
}

void KivLinetypeModel::Initialize() {
    buildRows();
    m_sortedNames.setLogicalLength(0);
}

void KivLinetypeModel::RemoveAll() {
    list().resetContent();
    if (m_items.getLogicalLength() > kFixedRows) m_items.setLogicalLength(kFixedRows);
    if (m_definitions.getLogicalLength() > kFixedRows) m_definitions.setLogicalLength(kFixedRows);
    for (int i = 0; i < m_items.getLogicalLength(); ++i) list().addString(m_items[i].name);
    m_sortedNames.setLogicalLength(0);
    site().setModifiedFlag(true);
}

void KivLinetypeModel::LoadLinetype(const KivString& name) {
    // 1. Loaded at most once, whatever the case, the three fixed rows included.
    const KivString wanted = upper(name);
    for (int i = 0; i < m_items.getLogicalLength(); ++i)
        if (upper(m_items[i].name) == wanted) return;
    // 2. to 6. The file's definition for the name.
    const KivLinetypeLookup lookup = KivLookUpLinetype(linetypePath(), name);
    if (!lookup.found()) return;
    // 7. The name as the caller gave it.
    insertLoadedItem(KivLinetypeItem{name, lookup.definition});
}

void KivLinetypeModel::DefineLinetype(const KivString& name, const KivString& definition) {
    if (fixedRowNamed(name) != -1) return;
    insertLoadedItem(KivLinetypeItem{name, definition});
    site().setModifiedFlag(true);
}

int KivLinetypeModel::sortIn(const KivString& name) {
    const int namesBefore = m_sortedNames.getLogicalLength();
    m_sortedNames.append(name);
    if (m_sortedNames.getLogicalLength() == namesBefore) return -1;
    m_sortedNames.sort(0, m_sortedNames.getLogicalLength() - 1, &compareNames);
    for (int k = 0; k < m_sortedNames.getLogicalLength(); ++k)
        if (m_sortedNames[k] == name) return k + kFixedRows;
    return kFixedRows;  // not reached: the name was just added
}

void KivLinetypeModel::takeSortedNameBack(const KivString& name) {
    for (int k = 0; k < m_sortedNames.getLogicalLength(); ++k) {
        if (m_sortedNames[k] == name) {
            m_sortedNames.removeAt(k);
            return;
        }
    }
}

void KivLinetypeModel::insertLoadedItem(KivLinetypeItem item) {
    // 1. and 2. The combo's row: the sorted place of the name as given. The list box appends.
    const KivString givenName = item.name;
    const int rowsBefore = m_items.getLogicalLength();
    int row = rowsBefore;
    if (m_placement == Placement::Sorted) {
        row = sortIn(givenName);
        if (row < 0) return;  // no memory: nothing changes
        // Past the end only when the fixed rows themselves found no memory at construction.
        row = std::min(row, rowsBefore);
    }
    // 3. The display name.
    item.name = displayName(givenName);
    // 4. The item, the child's row and the definition at the same index; whatever cannot be stored
    //    takes the whole insertion back, so that no later row is named or drawn as its neighbour.
    m_items.insertAt(row, item);
    if (m_items.getLogicalLength() == rowsBefore) {  // no memory
        takeSortedNameBack(givenName);
        return;
    }
    const KivLResult shown = m_placement == Placement::Appended ? list().addString(item.name) : list().insertString(row, item.name);
    if (child().exists() && shown != row) {
        // The child refused the row (no room in its list) or put it elsewhere.
        if (shown >= 0) list().deleteString(static_cast<int>(shown));
        m_items.removeAt(row);
        takeSortedNameBack(givenName);
        return;
    }
    // The definition goes in where the definition array already covers the row (before the window
    // exists it is completed when the rows are built).
    const int definitionsBefore = m_definitions.getLogicalLength();
    if (row <= definitionsBefore) {
        m_definitions.insertAt(row, item.definition);
        if (m_definitions.getLogicalLength() == definitionsBefore) {  // no memory
            list().deleteString(row);
            m_items.removeAt(row);
            takeSortedNameBack(givenName);
        }
    }
}

void KivLinetypeModel::defineFixedRow(int row, const KivString& name, const KivString& definition) {
    if (m_items.isValid(row)) m_items[row] = KivLinetypeItem{name, definition};  // in place: nothing to allocate
    list().deleteString(row);
    const KivLResult shown = list().insertString(row, name);
    if (child().exists() && shown != row) {
        // The child refused the row (no room in its list) or put it elsewhere: the row is taken
        // back with its item and definition, as any refused row is, so that every later row keeps
        // its own name and definition.
        if (shown >= 0) list().deleteString(static_cast<int>(shown));
        if (m_items.isValid(row)) m_items.removeAt(row);
        if (m_definitions.isValid(row)) m_definitions.removeAt(row);
        site().setModifiedFlag(true);
        return;
    }
    // Kept: the definition array receives the name, not the definition (unlike DefineLinetype), as
    // in the earlier module; the rows before it are completed first so that entry k stays row k's.
    completeDefinitions(row);
    m_definitions.setAtGrow(row, name);
    site().setModifiedFlag(true);
}

void KivLinetypeModel::UnloadLinetype(const KivString& name) {
    // 1. The first row of that name, any case, among the rows the list shows.
    const KivString wanted = upper(name);
    int found = -1;
    for (int i = 0; i < list().getCount() && i < m_items.getLogicalLength(); ++i) {
        if (upper(m_items[i].name) == wanted) {
            found = i;
            break;
        }
    }
    // 2. The three fixed rows cannot be unloaded.
    if (found < kFixedRows) return;
    // 3. The row, its definition, its item and its sorted name.
    list().deleteString(found);
    if (m_definitions.isValid(found)) m_definitions.removeAt(found);
    m_items.removeAt(found);
    if (m_sortedNames.isValid(found - kFixedRows)) m_sortedNames.removeAt(found - kFixedRows);
    site().setModifiedFlag(true);
}

// ---- Selection ----

int KivLinetypeModel::takeSelection() {
    m_currentIndex = static_cast<std::int32_t>(list().getCurSel());
    return m_currentIndex;
}

void KivLinetypeModel::SetComboIndex(long index) {
    m_currentIndex = static_cast<std::int32_t>(index);
    list().setCurSel(m_currentIndex);
    site().setModifiedFlag(true);
}

KivString KivLinetypeModel::SelectItem(const KivString& name) {
    const int count = static_cast<int>(list().getCount());
    // The fixed names select their rows whatever those show; any other name the first row showing it.
    int found = count > 0 ? fixedRowNamed(name) : -1;
    const KivString wanted = upper(name);
    for (int i = 0; found < 0 && i < count && i < m_items.getLogicalLength(); ++i)
        if (upper(m_items[i].name) == wanted) found = i;
    // No row of that name (or no rows yet): the selection stays as it is.
    if (found >= 0) {
        m_currentIndex = found;
        list().setCurSel(found);
    }
    return name;
}

KivString KivLinetypeModel::SelectItemAt(long idx) const {
    KivString text;
    // Past the last row the text is empty (an index beyond int is past every row).
    if (idx > -1) list().getText(static_cast<int>(std::min<long long>(idx, INT_MAX)), text);
    return text;
}

long KivLinetypeModel::GetCount() const { return static_cast<long>(list().getCount()); }
