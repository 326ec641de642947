// How the library is loaded and unloaded, and how an object is made and freed.
//
// The load and unload steps and the state that goes with them are exported: the public header
// declares _Q9_DllInit, _Q9_DllFini, SYSTEM_dll_refcount, SYSTEM_exitcode, SYSTEM_exitproc and
// _Q9_Finalizing. The system's loader runs the two steps; that is all that a dlopen does here.
#pragma once

namespace optxv {

/// Makes an object and stores its address. OWNS: the caller, until freeobject.
void createobject(void*& handle);

/// Frees the object and stores nil; nothing happens to a handle that is nil.
void freeobject(void*& handle);

}  // namespace optxv
