// SPDX-License-Identifier: Apache-2.0
// Saves and undefines macros of system headers and of common compiler switches with names of this library's
// constants; restore_macros.h restores them. Included before and after every list of constants, so there is
// no include guard.
//
// A source file in which such a macro is defined cannot use the constant: with <scsi/scsi.h> included,
// PI::PropertyValue::BUSY is still expanded. Undefine the macro there, or use the constant in another source
// file.
#pragma push_macro("BLOCK_SIZE")
#undef BLOCK_SIZE
#pragma push_macro("BOOL")
#undef BOOL
#pragma push_macro("BUSY")
#undef BUSY
#pragma push_macro("CHECK_ERROR")
#undef CHECK_ERROR
#pragma push_macro("COMPLETE")
#undef COMPLETE
#pragma push_macro("CONTINUE")
#undef CONTINUE
#pragma push_macro("DEBUG")
#undef DEBUG
#pragma push_macro("DELETE")
#undef DELETE
#pragma push_macro("DISABLED")
#undef DISABLED
#pragma push_macro("DOMAIN")
#undef DOMAIN
#pragma push_macro("DUMMY")
#undef DUMMY
#pragma push_macro("EMPTY")
#undef EMPTY
#pragma push_macro("ENABLED")
#undef ENABLED
#pragma push_macro("ERROR")
#undef ERROR
#pragma push_macro("FAILED")
#undef FAILED
#pragma push_macro("FILE_NAME")
#undef FILE_NAME
#pragma push_macro("FUNCTION")
#undef FUNCTION
#pragma push_macro("GOOD")
#undef GOOD
#pragma push_macro("GROUP")
#undef GROUP
#pragma push_macro("LOGGING")
#undef LOGGING
#pragma push_macro("MIXED")
#undef MIXED
#pragma push_macro("NAME")
#undef NAME
#pragma push_macro("NUMBER")
#undef NUMBER
#pragma push_macro("OK")
#undef OK
#pragma push_macro("OTHER")
#undef OTHER
#pragma push_macro("PACKAGE_VERSION")
#undef PACKAGE_VERSION
#pragma push_macro("PCI_SLOT")
#undef PCI_SLOT
#pragma push_macro("SOCKET")
#undef SOCKET
#pragma push_macro("STATUS")
#undef STATUS
#pragma push_macro("STRING")
#undef STRING
#pragma push_macro("SUCCESS")
#undef SUCCESS
#pragma push_macro("VERSION")
#undef VERSION
