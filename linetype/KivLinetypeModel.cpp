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

const char16_t* const kFixedNames[3] = {u"ByLayer", u"ByBlock", u"Continuous"};
}  // namespace

KivLinetypeModel::KivLinetypeModel(IKivControlSite& site, Placement placement) : m_site(site), m_placement(placement) {
    for (const char16_t* name : kFixedNames) items.append(KivLinetypeItem{KivString(name), KivString(kContinuousDefinition)});
}

KivString KivLinetypeModel::linetypePath() const { return KivLinetypeFilePath(supportPath, linetypeFile); }

KivString KivLinetypeModel::displayName(const KivString& name) {
    if (name.length() == 0) return name;
    KivString first = name.left(1);
    first.toUpper();
    KivString rest = name.right(name.length() - 1);
    // Lower case: the ASCII and Latin-1 letters toUpper raises.
    std::u16string units = rest.units();
    for (char16_t& c : units) {
        if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) c = static_cast<char16_t>(c + 0x20);
        else if (c == 0x178) c = 0xFF;
    }
    return first + KivString(std::move(units));
}

bool KivLinetypeModel::isFixedName(const KivString& upperName) {
    return upperName == KivString(u"BYLAYER") || upperName == KivString(u"BYBLOCK") || upperName == KivString(u"CONTINUOUS");
}

KivString KivLinetypeModel::eventName(int row) const {
    if (row >= 0 && row < 3) return KivString(kFixedNames[row]);
    // A row the item array does not hold (no selection: -1) has no name.
    return items.isValid(row) ? items[row].name : KivString();
}

KivString KivLinetypeModel::definitionOf(int row) const { return definitions.isValid(row) ? definitions[row] : KivString(); }

void KivLinetypeModel::completeDefinitions(int rowCount) {
    while (definitions.getLogicalLength() < rowCount && definitions.getLogicalLength() < items.getLogicalLength()) {
        const int before = definitions.getLogicalLength();
        definitions.append(items[before].definition);
        if (definitions.getLogicalLength() == before) return;  // no memory: the rest is completed later
    }
}

// ---- Rows ----

void KivLinetypeModel::buildRows() {
    rows().resetContent();
    for (int i = 0; i < items.getLogicalLength(); ++i) rows().addString(items[i].name);
    completeDefinitions(items.getLogicalLength());
}

void KivLinetypeModel::Initialize() {
    buildRows();
    sortedNames.setLogicalLength(0);
}

void KivLinetypeModel::RemoveAll() {
    rows().resetContent();
    if (items.getLogicalLength() > 3) items.setLogicalLength(3);
    if (definitions.getLogicalLength() > 3) definitions.setLogicalLength(3);
    for (int i = 0; i < items.getLogicalLength() && i < 3; ++i) rows().addString(items[i].name);
    sortedNames.setLogicalLength(0);
    m_site.setModifiedFlag(true);
}

void KivLinetypeModel::LoadLinetype(const KivString& name) {
    // 1. Loaded at most once, whatever the case, the three fixed rows included.
    const KivString wanted = upper(name);
    for (int i = 0; i < items.getLogicalLength(); ++i)
        if (upper(items[i].name) == wanted) return;
    // 2. to 6. The file's definition for the name.
    const KivLinetypeLookup lookup = KivLookUpLinetype(linetypePath(), name);
    if (!lookup.found()) return;
    // 7. The name as the caller gave it.
    insertLoadedItem(KivLinetypeItem{name, lookup.definition});
}

void KivLinetypeModel::DefineLinetype(const KivString& name, const KivString& definition) {
    if (isFixedName(upper(name))) return;
    insertLoadedItem(KivLinetypeItem{name, definition});
    m_site.setModifiedFlag(true);
}

void KivLinetypeModel::insertLoadedItem(KivLinetypeItem item) {
    // 1. The name as given joins the sorted names.
    const int namesBefore = sortedNames.getLogicalLength();
    sortedNames.append(item.name);
    if (sortedNames.getLogicalLength() == namesBefore) return;  // no memory: nothing changes
    sortedNames.sort(0, sortedNames.getLogicalLength() - 1, &compareNames);
    // 2. Its place: the first equal entry k, row k + 3.
    int row = 3;
    for (int k = 0; k < sortedNames.getLogicalLength(); ++k) {
        if (sortedNames[k] == item.name) {
            row = k + 3;
            break;
        }
    }
    // 3. The display name.
    const KivString givenName = item.name;
    item.name = displayName(item.name);
    // 4. The row: at its sorted place in the combo, at the end in the list box.
    const int rowsBefore = items.getLogicalLength();
    if (m_placement == Placement::Appended || row > rowsBefore) row = rowsBefore;
    auto takeNameBack = [&] {
        for (int k = 0; k < sortedNames.getLogicalLength(); ++k) {
            if (sortedNames[k] == givenName) {
                sortedNames.removeAt(k);
                break;
            }
        }
    };
    items.insertAt(row, item);
    if (items.getLogicalLength() == rowsBefore) {  // no memory: take the name back out, nothing changes
        takeNameBack();
        return;
    }
    if (m_placement == Placement::Appended) rows().addString(item.name);
    else rows().insertString(row, item.name);
    // The definition at the same index, where the definition array already covers the row.
    const int definitionsBefore = definitions.getLogicalLength();
    if (row <= definitionsBefore) {
        definitions.insertAt(row, item.definition);
        if (definitions.getLogicalLength() == definitionsBefore) {
            // No memory: every row after this one would be drawn with its predecessor's definition.
            // The whole insertion is taken back instead: nothing changes.
            rows().deleteString(row);
            items.removeAt(row);
            takeNameBack();
        }
    }
}

void KivLinetypeModel::defineFixedRow(int row, const KivString& name, const KivString& definition) {
    if (items.isValid(row)) items[row] = KivLinetypeItem{name, definition};  // in place: nothing to allocate
    rows().deleteString(row);
    rows().insertString(row, name);
    // Kept: the definition array receives the name, not the definition (unlike DefineLinetype), as
    // in the earlier module; the rows before it are completed first so that entry k stays row k's.
    completeDefinitions(row);
    definitions.setAtGrow(row, name);
    m_site.setModifiedFlag(true);
}

void KivLinetypeModel::UnloadLinetype(const KivString& name) {
    // 1. The first row of that name, any case, among the rows the list shows.
    const KivString wanted = upper(name);
    int found = -1;
    for (int i = 0; i < rows().getCount() && i < items.getLogicalLength(); ++i) {
        if (upper(items[i].name) == wanted) {
            found = i;
            break;
        }
    }
    // 2. The three fixed rows cannot be unloaded.
    if (found < 3) return;
    // 3. The row, its definition, its item and its sorted name.
    rows().deleteString(found);
    if (definitions.isValid(found)) definitions.removeAt(found);
    items.removeAt(found);
    if (sortedNames.isValid(found - 3)) sortedNames.removeAt(found - 3);
    m_site.setModifiedFlag(true);
}

// ---- Selection ----

void KivLinetypeModel::SetComboIndex(long index) {
    currentIndex = static_cast<std::int32_t>(index);
    rows().setCurSel(currentIndex);
    m_site.setModifiedFlag(true);
}

KivString KivLinetypeModel::SelectItem(const KivString& name) {
    const KivString wanted = upper(name);
    const int count = static_cast<int>(rows().getCount());
    int found = -1;
    if (count > 0) {
        if (wanted == KivString(u"BYLAYER")) found = 0;
        else if (wanted == KivString(u"BYBLOCK")) found = 1;
        else if (wanted == KivString(u"CONTINUOUS")) found = 2;
    }
    for (int i = 0; found < 0 && i < count && i < items.getLogicalLength(); ++i)
        if (upper(items[i].name) == wanted) found = i;
    // No row of that name (or no rows yet): the selection stays as it is.
    if (found >= 0) {
        currentIndex = found;
        rows().setCurSel(found);
    }
    return name;
}

KivString KivLinetypeModel::SelectItemAt(long idx) const {
    KivString text;
    // Past the last row the text is empty (an index beyond int is past every row).
    if (idx > -1) rows().getText(static_cast<int>(std::min<long long>(idx, INT_MAX)), text);
    return text;
}

long KivLinetypeModel::GetCount() const { return static_cast<long>(rows().getCount()); }
