/* A plug-in: a library that says its version, is told when it is loaded and unloaded, and does something.
 *
 * Shows: the two names that the agent's library knows, and the mark that lets a name leave a library that
 * is compiled with hidden visibility. */
#include <stdio.h>
#include <vlrcomn/agent_identity.h>
#include <vlrcomn/dynamic_library.h>

/* The version stamp; a plug-in without it has none. */
/* NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the agent calls it so. */
VLRCOMN_API int SVPLUGIN_GetVersion(uint16_t* major, uint16_t* minor, uint16_t* third,
                                    uint16_t* fourth) {
    *major = 1;
    *minor = 4;
    *third = 0;
    *fourth = 27;
    return 0;
}

/* The entry point, which a plug-in need not have. Any answer but 1 to the first call refuses the load. It must
 * not load or free libraries, nor wait for a thread that does. */
VLRCOMN_API int DllMain(void* module, uint32_t reason, void* reserved) {
    (void)module;
    (void)reserved;
    puts(reason == ORU_PROCESS_ATTACH ? "plug-in: loaded" : "plug-in: unloaded");
    return 1;
}

/* What host and plug-in have agreed on. */
VLRCOMN_API int enforce(const char* policy) {
    printf("plug-in: enforcing %s\n", policy);
    return 0;
}
