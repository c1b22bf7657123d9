// Resource identifiers of the module. Used by the .rc file and the code.
#pragma once

// Strings: user type names (controls) and registration names (pages).
#define IDS_KIVCOLOR 1
#define IDS_KIVCOLOR_PPG 2
#define IDS_KIVLAYER 3
#define IDS_KIVLAYER_PPG 4
#define IDS_KIVLINETYPE 5
#define IDS_KIVLINETYPE_PPG 6
#define IDS_KIVLINEWEIGHT 7
#define IDS_KIVLINEWEIGHT_PPG 8
#define IDS_KIVHATCH 9
#define IDS_KIVHATCH_PPG 10
#define IDS_KIVLINETYPELIST 11
#define IDS_KIVLTYPELIST_PPG 12

// Toolbox bitmaps.
#define IDB_KIVCOLOR 1
#define IDB_KIVLAYER 2
#define IDB_KIVLINETYPE 3
#define IDB_KIVLINEWEIGHT 4
#define IDB_KIVHATCH 5
#define IDB_KIVLINETYPELIST 6

// Property page dialogs and captions.
#define IDD_PROPPAGE_KIVCOLOR 200
#define IDD_PROPPAGE_KIVLAYER 201
#define IDD_PROPPAGE_KIVLINETYPE 202
#define IDD_PROPPAGE_KIVLINEWEIGHT 203
#define IDD_PROPPAGE_KIVHATCH 204
#define IDD_PROPPAGE_KIVLTYPELIST 205
