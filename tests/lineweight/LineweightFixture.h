// A lineweight control over the in-memory seams.
#pragma once

#include "CKivLineweightCtrl.h"
#include "ControlFixture.h"

class LineweightFixture : public ControlFixture {
protected:
    void create() { ctrl.OnCreate(box); }
    void mousePick(int index) { ControlFixture::mousePick(ctrl, index); }
    void keyPick(int index) { ControlFixture::keyPick(ctrl, index); }

    CKivLineweightCtrl ctrl{site};
};
