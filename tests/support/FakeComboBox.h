// Test double: an in-memory owner-drawn combo box (CBS_HASSTRINGS, no CBS_SORT) that answers every
// IKivChildList call as a Win32 combo box does (the rules of Wine's combo and list boxes):
// - addString appends; insertString at -1 appends, beyond the count fails with CB_ERR;
// - deleteString/setItemData/getItemData/getText of an index outside 0..count-1 fail with CB_ERR
//   (setItemData(-1) sets nothing);
// - deleting the selected item clears the selection, deleting or inserting above it moves it;
// - setCurSel outside 0..count-1 (and -1) clears the selection and returns CB_ERR;
// - a new item's data is 0; after failAddAfter(n) items, addString/insertString return CB_ERRSPACE.
// Window operations are recorded for assertions.
#pragma once

#include <string>
#include <vector>

#include "KivPrinters.h"
#include "IKivChildList.h"

class FakeComboBox : public IKivChildList {
public:
    struct Item {
        KivString text;
        KivItemData data = 0;
    };

    KIV_CHILD_LIST_MEMBERS

    // Test conveniences.
    std::vector<std::string> texts() const;
    std::string textAt(int index) const;
    std::uint32_t colorAt(int index) const { return static_cast<std::uint32_t>(items.at(static_cast<std::size_t>(index)).data); }
    void failAddAfter(int count) { capacity = count; }
    int count() const { return static_cast<int>(items.size()); }

    std::vector<Item> items;
    KivLResult selection = -1;
    bool dropped = false;
    bool enabled = true;
    int selectionFieldHeight = 0;
    int listItemHeight = 0;
    int capacity = -1;  // -1: unlimited
    std::vector<std::string> log;
};
