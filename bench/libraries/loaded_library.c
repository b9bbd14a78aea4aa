/* A library to be loaded and searched. */
__attribute__((visibility("default"))) int answer(void);

int answer(void) {
    return 42;
}
