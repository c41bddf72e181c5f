"""Names of languages in character sets, language settings, and the character sets by Python's codecs."""

import unicodedata

from line import CannotTell, Raised, Text, case_lines

LANGUAGES = ['AMERICAN', 'KOREAN', 'JAPANESE', 'VIETNAMESE', 'BRAZILIAN PORTUGUESE', 'TRADITIONAL CHINESE', 'RUSSIAN']
CHARSETS = ['ASCII', 'EUCKR', 'MSWIN949', 'UTF8', 'SJIS', 'EUCJP', 'BIG5', 'GBK', 'ISO8859_1', 'MSWIN1252', 'MSWIN1251',
            'KOI8R', 'MSWIN1258']
_CODECS = ['ascii', 'euc_kr', 'cp949', 'utf-8', 'shift_jis', 'euc_jp', 'cp950', 'gbk', 'latin-1', 'cp1252', 'cp1251',
           'koi8_r', 'cp1258']
_TABLES = ['std_month', 'abb_month', 'rm_month', 'std_day', 'abb_day', 'std_adbc', 'std_ampm']


def _stored():
    """The names as names.txt has them: by table, language * 3 + case, index."""
    names = {}
    for case in case_lines('names'):
        table = case.operation.removesuffix('_tab_')
        if table in _TABLES:
            language, letter_case, index = map(int, case.inputs)
            units = bytes.fromhex(case.outputs[0][1:])
            names[table, language, letter_case, index] = units.decode('utf-16-be')
    return names


_names = None


def name(table, language, letter_case, index):
    global _names
    _names = _names or _stored()
    return _names[table, 0 if table == 'rm_month' else language, letter_case, index]


def encode(text, charset):
    """In a character set, a character that it does not have as '?'."""
    return b''.join(_encoded(character, charset) for character in text)


_TONE_MARKS = '\u0300\u0301\u0303\u0309\u0323'  # stand behind their letter in MSWIN1258


def _encoded(character, charset):
    if CHARSETS[charset] == 'GBK' and character == '\u20ac':
        return b'\x80'
    forms = [character]
    if CHARSETS[charset] == 'MSWIN1258':
        letter = unicodedata.normalize('NFD', character)
        marks = [mark for mark in letter if mark in _TONE_MARKS]
        bare = ''.join(mark for mark in letter if mark not in _TONE_MARKS)
        forms.append(unicodedata.normalize('NFC', bare) + ''.join(marks))
    for form in forms:
        try:
            return form.encode(_CODECS[charset])
        except UnicodeError:
            continue
    return b'?'


def decode(text, charset):
    return text.decode(_CODECS[charset])


def _get(table):
    def recompute(language, charset, letter_case, index):
        text = name(table, int(language), int(letter_case), int(index))
        return [Text(encode(text, int(charset)))]
    return recompute


def _from_ucs2(charset, units):
    text = units.decode('utf-16-be')
    if CHARSETS[int(charset)] == 'SJIS' and set(text) & set('\\~\u00a5\u203e'):
        raise CannotTell  # one byte, two readings
    return [Text(encode(text, int(charset)))]


def _to_ucs2(charset, text):
    try:
        characters = decode(text, int(charset))
        return [''.join(c if c <= '\uffff' else '?' for c in characters).encode('utf-16-be')]
    except UnicodeError:
        raise CannotTell from None


# ---- settings

_SORTS = ['BINARY', 'EBCDIC', 'GERMAN', 'FRENCH', 'DUTCH']
_BLANK = ' \t\n\v\f\r'
_BLANK_IN_FRONT = ' \t\n\f\r'


def _lookup(values):
    def recompute(text):
        wanted = text.decode('latin-1').upper()
        return [1, values.index(wanted)] if wanted in values else [0]
    return recompute


def _sort(text):
    text = text.upper()
    extended = text.startswith('X')
    base, *suffix = text[extended:].split('_')
    base = base.strip(_BLANK)
    if len(suffix) > 1 or len(text) - extended > 256 or base not in _SORTS or extended and _SORTS.index(base) < 2:
        return None
    strengths = {'CI': 1, 'AI': 0}
    if suffix and suffix[0].strip(_BLANK) not in strengths:
        return None
    return [_SORTS.index(base), int(extended), strengths[suffix[0].strip(_BLANK)] if suffix else 2]


def _parse_sort(text):
    sort = _sort(text.decode('latin-1'))
    return [0] if sort is None else [1] + sort


def parse_setting(text):
    """Parameter and value of NAME = VALUE."""
    text = text.decode('latin-1')
    parameter, values = -1, None
    if text.count('=') <= 1 and len(text) < 257:
        setting, _, value = (part.rstrip(_BLANK).lstrip(_BLANK_IN_FRONT).upper() for part in text.partition('='))
        if setting == 'NLS_DATE_LANGUAGE':
            parameter, values = 3, [LANGUAGES.index(value)] if value in LANGUAGES else None
        elif setting == 'NLS_CALENDAR':
            parameter, values = 4, [0] if value == 'GREGORIAN' else None
        elif setting == 'NLS_SORT':
            parameter, values = 5, _sort(value)
    if values is None:
        error = Raised(-11035)
        error.left = [parameter]
        raise error
    return [parameter] + values


OPERATIONS = {f'nls_date_lang_get_{name}': _get(name) for name in _TABLES if name != 'rm_month'}
OPERATIONS |= {
    'nls_date_lang_get_rom_month': _get('rm_month'),
    'nls_date_lang_name_tab_': lambda i: [LANGUAGES[int(i)]],
    'from_ucs2': _from_ucs2,
    'to_ucs2': _to_ucs2,
    'dv_nls_parse': parse_setting,
    'dv_nls_date_lang_parse': _lookup(LANGUAGES),
    'dv_nls_date_cal_parse': _lookup(['GREGORIAN']),
    'dv_nls_comp_parse': _lookup(['BINARY', 'LINGUISTIC']),
    'dv_nls_sort_parse': _parse_sort,
}
