# SPDX-License-Identifier: Apache-2.0

"""documented_test.py DOXYGEN DOXYFILE: a header in which one public name has no documentation stops the build of the
site, and so does documentation that Doxygen does not understand."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "docs/doxygen/documented.py"
DOXYGEN, DOXYFILE = sys.argv[1:3]

HEADER = """\
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A header.
#pragma once

/// A macro.
#define MACRO 1

/// A namespace.
namespace N {

/// An enumeration.
enum E {
    A,  ///< a constant
    /// @{
    /// Two constants.
    B,
    C,
    /// @}
};

/// A type.
using T = int;

/// A class.
class K {
public:
    K() = default;
    K(const K&) = default;
    K(K&&) noexcept = default;
    K& operator=(const K&) = default;
    K& operator=(K&&) noexcept = default;
    virtual ~K();

    /// @name Section
    /// @{

    /// A function.
    /// @param a of it
    void F(int a);

    /// @}

    /// @{
    /// Two functions.
    void G(int a,
           int b);
    void G(int a);
    /// @}

    int m_Member;  ///< a member

private:
    int m_Private;
};

/// A free function.
void F();

/// An enumeration's namespace.
namespace S {
/// An enumeration, visible in two namespaces.
enum _S {};
}  // namespace S
using S::_S;

}  // namespace N
"""


def problems(header):
    """What the build of the site says of a header; nothing when all is well."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "x.h"
        path.write_text(header)
        overrides = (f'INPUT = "{path}"\nOUTPUT_DIRECTORY = "{folder}"\nSTRIP_FROM_PATH = "{folder}"\n'
                     "GENERATE_HTML = NO\nLAYOUT_FILE =\n")
        settings = re.sub("^@INCLUDE.*$", "", pathlib.Path(DOXYFILE).read_text(), flags=re.MULTILINE) + overrides
        doxygen = subprocess.run([DOXYGEN, "-"], input=settings,
                                 stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True)
        if doxygen.returncode != 0:
            return doxygen.stderr
        names = subprocess.run([sys.executable, "-B", SCRIPT, f"{folder}/xml"], stderr=subprocess.PIPE,
                               stdout=subprocess.DEVNULL, text=True)
        return names.stderr.replace(folder, "") if names.returncode != 0 else ""


class Documented(unittest.TestCase):
    def assert_needed(self, comment, problem):
        """Without the comment there is the problem, with it there is none."""
        self.assertEqual(HEADER.count(comment), 1, comment)
        self.assertEqual(problems(HEADER.replace(comment, "")), problem + "\n")

    def test_a_header_whose_names_are_all_documented_passes(self):
        self.assertEqual(problems(HEADER), "")

    def test_a_macro_needs_documentation(self):
        self.assert_needed("/// A macro.", "x.h:7: define MACRO is not documented")

    def test_a_namespace_needs_documentation(self):
        self.assert_needed("/// A namespace.", "x.h:10: namespace N is not documented")

    def test_an_enumeration_needs_documentation(self):
        self.assert_needed("/// An enumeration.", "x.h:13: enum N::E is not documented")

    def test_a_constant_needs_documentation(self):
        self.assert_needed("  ///< a constant", "x.h:13: constant N::E A is not documented")

    def test_a_type_needs_documentation(self):
        self.assert_needed("/// A type.", "x.h:23: typedef N::T is not documented")

    def test_a_class_needs_documentation(self):
        self.assert_needed("/// A class.", "x.h:26: class N::K is not documented")

    def test_a_member_needs_documentation(self):
        self.assert_needed("  ///< a member", "x.h:51: variable N::K::m_Member is not documented")

    def test_a_function_needs_documentation(self):
        self.assert_needed("/// A free function.", "x.h:58: function N::F() is not documented")

    def test_a_function_of_a_section_needs_documentation(self):
        self.assert_needed("    /// A function.\n    /// @param a of it\n",
                           "x.h:38: function N::K::F(int a) is not documented")

    def test_a_header_needs_documentation(self):
        self.assert_needed("/// @file\n/// A header.\n", "x.h:1: file x.h is not documented")

    def test_a_parameter_that_is_not_there_is_refused(self):
        self.assertIn("argument 'b'", problems(HEADER.replace("@param a of it", "@param b of it")))

    def test_a_reference_to_nothing_is_refused(self):
        self.assertIn("nothing", problems(HEADER.replace("/// A class.", "/// A class, see @ref nothing.")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
