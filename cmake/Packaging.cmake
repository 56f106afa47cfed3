# The Debian package: `cpack -G DEB` in the build folder packs what the install rules put under
# /usr (bin/dovrex, bin/dovrex-headless, share/dovrex with the default data and the manual, the
# desktop entry and the icon). The libraries it needs are found by dpkg-shlibdeps (dpkg-dev).
set(DOVREX_PACKAGE_MAINTAINER "dovrex maintainers <maintainers@dovrex.invalid>"
    CACHE STRING "Maintainer field of the Debian package")

set(CPACK_PACKAGE_NAME dovrex)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${DOVREX_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "双色球 ticket planner: pick, filter, shrink and check tickets")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "dovrex expands wide picks of 双色球 numbers into tickets, filters them by some forty conditions "
    "measured on each ticket and against the draw history, shrinks what is left by a guarantee-N "
    "covering, and checks tickets against a draw. The published draw history ships with it.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The windows are in Chinese: without a CJK font they show empty boxes.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk | fonts-wqy-microhei | fonts-wqy-zenhei")
include(CPack)
