// A colour control over the in-memory seams, with a colour dialog whose answers the test scripts.
#pragma once

#include "CKivColorCtrl.h"
#include "ControlFixture.h"

class ColourFixture : public ControlFixture {
protected:
    void create(int height = 21) { ctrl.OnCreate(box, height); }
    void mousePick(int index) { ControlFixture::mousePick(ctrl, index); }
    void keyPick(int index) { ControlFixture::keyPick(ctrl, index); }

    ScriptedColorDialog dialog;
    CKivColorCtrl ctrl{site, dialog};
};
