// IKivColorDialog: the seam of the platform's colour dialog (CColorDialog) used by "Select.."
// Portable. The Win32 shell shows ChooseColorW modally; tests script the answer.
#pragma once

#include "KivTypes.h"

class IKivColorDialog {
public:
    virtual ~IKivColorDialog() = default;
    // Shows the dialog modally with `initial` preselected. Returns true and sets `chosen` when the
    // user confirms; false when the dialog is cancelled.
    virtual bool choose(KivColor initial, KivColor& chosen) = 0;
};
