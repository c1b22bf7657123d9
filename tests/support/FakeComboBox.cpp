#include "FakeComboBox.h"

KivLResult FakeComboBox::addString(const KivString& text) { return insertString(-1, text); }

KivLResult FakeComboBox::insertString(int index, const KivString& text) {
    if (index == -1) index = count();
    if (index < 0 || index > count()) return kiv::kCbErr;
    if (capacity >= 0 && count() >= capacity) return kiv::kCbErrSpace;
    items.insert(items.begin() + index, Item{text, 0});
    if (selection >= index) ++selection;
    return index;
}

KivLResult FakeComboBox::deleteString(int index) {
    if (index < 0 || index >= count()) return kiv::kCbErr;
    items.erase(items.begin() + index);
    if (selection == index) selection = -1;
    else if (selection > index) --selection;
    return count();
}

void FakeComboBox::resetContent() {
    items.clear();
    selection = -1;
    log.push_back("ResetContent");
}

KivLResult FakeComboBox::getCount() { return static_cast<KivLResult>(items.size()); }
KivLResult FakeComboBox::getCurSel() { return selection; }
bool FakeComboBox::getDroppedState() { return dropped; }
void FakeComboBox::setDefaultGuiFont() { log.push_back("SetFont(DEFAULT_GUI_FONT)"); }
void FakeComboBox::redraw(unsigned flags) { log.push_back("RedrawWindow(" + std::to_string(flags) + ")"); }
void FakeComboBox::invalidate(bool erase) { log.push_back(std::string("Invalidate(") + (erase ? "erase" : "") + ")"); }
void FakeComboBox::update() { log.push_back("UpdateWindow"); }
void FakeComboBox::enable(bool isEnabled) {
    enabled = isEnabled;
    log.push_back(std::string("EnableWindow(") + (isEnabled ? "TRUE" : "FALSE") + ")");
}
void FakeComboBox::setFocus() { log.push_back("SetFocus"); }

KivLResult FakeComboBox::setItemData(int index, KivItemData data) {
    if (index < 0 || index >= count()) return kiv::kCbErr;
    items[static_cast<std::size_t>(index)].data = data;
    return 0;
}

KivLResult FakeComboBox::getItemData(int index) {
    if (index < 0 || index >= count()) return kiv::kCbErr;
    return items[static_cast<std::size_t>(index)].data;
}

KivLResult FakeComboBox::getText(int index, KivString& text) {
    if (index < 0 || index >= count()) return kiv::kCbErr;
    text = items[static_cast<std::size_t>(index)].text;
    return text.length();
}

KivLResult FakeComboBox::setCurSel(int index) {
    if (index < 0 || index >= count()) {
        selection = -1;
        return kiv::kCbErr;
    }
    selection = index;
    return index;
}

KivLResult FakeComboBox::setItemHeight(int index, int height) {
    if (height < 0 || height > 32767) return kiv::kCbErr;
    if (index == -1) selectionFieldHeight = height;
    else listItemHeight = height;
    log.push_back("SetItemHeight(" + std::to_string(index) + "," + std::to_string(height) + ")");
    return 0;
}

KivLResult FakeComboBox::getItemHeight(int index) { return index == -1 ? selectionFieldHeight : listItemHeight; }

void FakeComboBox::move(int x, int y, int width, int height, bool repaint) {
    log.push_back("MoveWindow(" + std::to_string(x) + "," + std::to_string(y) + "," + std::to_string(width) + "," +
                  std::to_string(height) + (repaint ? ",TRUE" : ",FALSE") + ")");
}

std::vector<std::string> FakeComboBox::texts() const {
    std::vector<std::string> out;
    for (const Item& item : items) out.push_back(item.text.toUtf8());
    return out;
}

std::string FakeComboBox::textAt(int index) const { return items.at(static_cast<std::size_t>(index)).text.toUtf8(); }
