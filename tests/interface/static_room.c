/* Takes some of the loader's room for static thread-local storage, as a plug-in of somebody else's may. */
static _Thread_local __attribute__((tls_model("initial-exec"))) char room[32];

char* static_room(void) {
    return room;
}
