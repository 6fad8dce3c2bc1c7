// SPDX-License-Identifier: Apache-2.0

// The switch of all traces. The rest of the class belongs to the libraries above.
class __attribute__((visibility("default"))) VELKTrace {
public:
    static bool tracesEnabled;
};

bool VELKTrace::tracesEnabled = false;
