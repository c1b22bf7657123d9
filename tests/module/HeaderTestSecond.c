/* A second source file of the header test: it includes the header without <initguid.h>, as every
   file but one of a host does, and so uses the GUIDs the first file defines. */
#include <windows.h>

#include <KivLorqControls.h>

#ifdef __cplusplus
extern "C" {
#endif
const GUID* secondFileColourClass(void) { return &CLSID_KivColor; }
int secondFileLinetypeSelChange(void) { return DISPID_KivLinetypeEvents_SelChange; }
#ifdef __cplusplus
}
#endif
