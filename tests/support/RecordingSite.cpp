#include "RecordingSite.h"

std::vector<std::string> RecordingSite::eventSummaries() const {
    std::vector<std::string> out;
    for (const Event& e : events) {
        std::string s = e.dispid == 1 ? "SelChange(" : e.dispid == 2 ? "SelAndCloseUp(" : "Event" + std::to_string(e.dispid) + "(";
        for (std::size_t i = 0; i < e.args.size(); ++i) {
            if (i > 0) s += ",";
            s += e.args[i].kind == KivEventArg::Kind::Long ? std::to_string(e.args[i].longValue)
                                                           : "\"" + e.args[i].stringValue.toUtf8() + "\"";
        }
        out.push_back(s + ")");
    }
    return out;
}

bool ScriptedColorDialog::choose(KivColor initial, KivColor& chosen) {
    ++shown;
    initialColors.push_back(initial);
    if (answers.empty()) return false;
    const Answer answer = answers.front();
    answers.pop_front();
    if (answer.confirm) chosen = answer.color;
    return answer.confirm;
}
