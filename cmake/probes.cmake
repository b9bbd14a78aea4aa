# What the host's C library offers beyond the oldest supported system (Mac OS X 10.4). Code tests the
# feature through source/support/config.h and never the system's name.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckSymbolExists)

set(CMAKE_REQUIRED_DEFINITIONS -D_GNU_SOURCE)
check_symbol_exists(O_CLOEXEC fcntl.h VLRCOMN_HAVE_O_CLOEXEC)
check_symbol_exists(SOCK_CLOEXEC sys/socket.h VLRCOMN_HAVE_SOCK_CLOEXEC)
check_symbol_exists(openat fcntl.h VLRCOMN_HAVE_OPENAT)
check_symbol_exists(pipe2 unistd.h VLRCOMN_HAVE_PIPE2)
check_symbol_exists(_SC_NPROCESSORS_ONLN unistd.h VLRCOMN_HAVE_SC_NPROCESSORS_ONLN)
check_symbol_exists(posix_memalign stdlib.h VLRCOMN_HAVE_POSIX_MEMALIGN)
check_symbol_exists(mkostemp stdlib.h VLRCOMN_HAVE_MKOSTEMP)
# The C library's handler of failed assertions; hidden by NDEBUG.
list(APPEND CMAKE_REQUIRED_DEFINITIONS -UNDEBUG)
check_symbol_exists(__assert_fail assert.h VLRCOMN_HAVE_ASSERT_FAIL)
check_symbol_exists(__assert_rtn assert.h VLRCOMN_HAVE_ASSERT_RTN)
check_symbol_exists(ifr_ifindex net/if.h VLRCOMN_HAVE_SIOCGIFINDEX)  # the question and its answer, of Linux
unset(CMAKE_REQUIRED_DEFINITIONS)

check_cxx_compiler_flag(-fno-plt VLRCOMN_HAVE_NO_PLT)
check_linker_flag(CXX LINKER:-Bsymbolic-functions VLRCOMN_HAVE_SYMBOLIC_FUNCTIONS)
check_linker_flag(CXX LINKER:-z,nodelete VLRCOMN_HAVE_NODELETE)

configure_file(${CMAKE_CURRENT_LIST_DIR}/config.h.in
               ${PROJECT_BINARY_DIR}/generated/support/config.h)
