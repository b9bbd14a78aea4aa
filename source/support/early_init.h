// Marks a namespace-scope constant that has to be complete before any other static object, so that
// static initialisers of the programs and libraries around this one may read it, also when it is
// linked statically. Systems without the attribute (Mac OS X) initialise a loaded library as a whole
// before its users, and nothing inside this library needs the constants earlier.
#pragma once

#if defined(__ELF__)
#define VLRCOMN_EARLY_INIT __attribute__((init_priority(101)))
#else
#define VLRCOMN_EARLY_INIT
#endif
