"""Writes a library to be preloaded, in which every exported function of the product stands once more.

Each passes its call on. The one that DV_LOST names does not: under DV_FAULT=nothing it returns 0 and leaves its results
unwritten, under DV_FAULT=answer it does everything and then returns 0 for what is not 0, and 1 for 0. The first call
of each is noted in the file DV_CALLED. The libraries call their own functions directly, so that only calls from outside
come here.
"""

import re

_FUNCTION = re.compile(r"function (\w+) (.*?) ?\((?!\*)(.*)\)$")
_NEVER_RETURN = ("dv_err_and_jmp", "dv_rethrow")  # no caught error without them

_FRAME = """\
// Made by tools/called/interposer.py.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

%(includes)s

static const char *const names[] = {
%(names)s
};
enum { COUNT = sizeof(names) / sizeof(names[0]) };
static void *passed_on[COUNT];
static unsigned char called[COUNT];
static int lost = -1, lost_answer = -1, note = -1;

__attribute__((constructor)) static void begin(void) {
    const char *name = getenv("DV_LOST"), *fault = getenv("DV_FAULT"), *path = getenv("DV_CALLED");
    for (int i = 0; i < COUNT; ++i) {
        passed_on[i] = dlsym(RTLD_NEXT, names[i]);
        if (name == NULL || strcmp(name, names[i]) != 0) continue;
        if (strcmp(fault, "answer") == 0) lost_answer = i; else lost = i;
    }
    if (path != NULL) note = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
}

static int is_lost(int i) {
    if (!called[i] && note >= 0) {  // at once, for the process may end by abort()
        const int saved = errno;
        dprintf(note, "%%s\\n", names[i]);
        errno = saved;
    }
    called[i] = 1;
    return i == lost;
}

%(functions)s
"""

_VOID_FUNCTION = """\
void %(name)s(%(parameters)s) {
    if (is_lost(%(index)d)) return;
    ((void (*)(%(types)s))passed_on[%(index)d])(%(arguments)s);
}"""
_FUNCTION_WITH_RESULT = """\
%(result)s %(name)s(%(parameters)s) {
    if (is_lost(%(index)d)) return 0;
    %(result)s result = ((%(result)s (*)(%(types)s))passed_on[%(index)d])(%(arguments)s);
    return %(index)d == lost_answer ? (%(result)s)!result : result;
}"""


def exported_functions(interface):
    """Name, result and parameter types of the functions in the lines of abi/interface.txt that a library exports."""
    symbols = {line.split()[2] for line in interface if line.startswith("symbol ")}
    for line in interface:
        match = _FUNCTION.match(line)
        if match and match[1] in symbols and match[1] not in _NEVER_RETURN:
            yield match[1], match[2], _parameter_types(match[3])


def _parameter_types(text):
    """The types between the commas that are in no parentheses."""
    types, depth = [""], 0
    for letter in text:
        depth += (letter == "(") - (letter == ")")
        if letter == "," and depth == 0:
            types.append("")
        else:
            types[-1] += letter
    types = [item.strip() for item in types]
    return [] if types == ["void"] else types


def _function_text(index, name, result, types):
    return (_VOID_FUNCTION if result == "void" else _FUNCTION_WITH_RESULT) % {
        "index": index, "name": name, "result": result,
        "types": ", ".join(types) or "void",
        "parameters": ", ".join(f"__typeof__({item}) a{i}" for i, item in enumerate(types)) or "void",
        "arguments": ", ".join(f"a{i}" for i in range(len(types))),
    }


def source(functions, headers):
    return _FRAME % {
        "includes": "\n".join(f'#include "dvtypes/{name}"' for name in headers),
        "names": "\n".join(f'    "{name}",' for name, _, _ in functions),
        "functions": "\n\n".join(_function_text(i, *function) for i, function in enumerate(functions)),
    }
