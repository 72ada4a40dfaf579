// Leads calls of the engine's functions through functions of the simulation.
//
// The linker's option --wrap=SYMBOL (CMakeLists.txt has the list) makes every call of the function
// from another file call wrapNAME, and gives wrapNAME the engine's own as realNAME. Calls within
// the file that defines the function stay as they are.
#pragma once

#define WRAP_FUNCTION(symbol, result, name, parameters)     \
    result real##name parameters __asm__("__real_" symbol); \
    result wrap##name parameters __asm__("__wrap_" symbol)
