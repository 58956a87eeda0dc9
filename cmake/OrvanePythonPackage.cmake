# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package of the Python module, from a build of its own: one Python, no windows. It stands
# beside orvane.deb, which it does not need.
include(GNUInstallDirs)

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(ORVANE_PACKAGE_FILES ${CMAKE_BINARY_DIR}/package)
set(docs ${CMAKE_INSTALL_DATADIR}/doc/python3-orvane)

install(FILES ${packaging}/copyright DESTINATION ${docs} COMPONENT python)
install(FILES ${ORVANE_PACKAGE_FILES}/changelog.gz DESTINATION ${docs} COMPONENT python OPTIONAL)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL python)
set(CPACK_PACKAGE_NAME python3-orvane)
set(CPACK_PACKAGE_CONTACT "Orvane developers <orvane@users.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${ORVANE_PACKAGE_FILES})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PYTHON_FILE_NAME python3-orvane.deb)
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-orvane)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "field files of geophysical receivers in Python")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION
"The module orvane reads parameter tables, recordings, stacks, calibrations
and schedules of field receivers into NumPy arrays, and writes tables as
safely as the program does.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
# The compiled part fits the minor version that it was built for, and no other.
set(version "${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR}")
math(EXPR following "${Python3_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
  "python3 (>= ${version}), python3 (<< ${Python3_VERSION_MAJOR}.${following}), python3-numpy")
# xarray: what to_xarray() makes. distributed and the tool: the work of a survey on several machines.
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "orvane, python3-xarray, python3-distributed")
# Byte code is made when it is installed and goes with it.
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${packaging}/python/postinst ${packaging}/python/prerm)
include(CPack)
