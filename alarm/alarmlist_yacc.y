/* SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
   SPDX-License-Identifier: MIT

   Alarm lists: one object or array of strings, numbers, booleans, null, objects and arrays.
   Keys are quoted strings or bare words. Nothing follows the outermost value.

       {cams: ["front", 'back'], armed: true, /* since * / since: 1.5e3, reason: null}

   Token     Code   Value
   TSTRING   32001  QString
   TNUMBER   32002  double
   TBOOL     32003  bool
   TNULL     32004  invalid QVariant
   others: their character, no value

   The result goes to the AlarmListParser, which owns the scanner and the location, too.

   Kept on purpose:
   - Both list rules are right-recursive and append: arrays come out in reverse order, and of the
     values of a repeated key the first in the text comes first.
   - There is no error recovery: the first syntax error ends the parse.
   - The stack never grows. A right-recursive list holds two symbols an element, so its 200 entries
     are also the limit of flat lists: 99 values, 98 members; arrays nest 197 deep.

   The values themselves wait in the parser object, in the order of the text, until the object or
   array that they belong to is complete. So each has one holder and is never copied. What the
   grammar passes on is how many members or elements there are.

   Numbers in the comments are the rules' own. */

%define api.pure full
%define api.prefix {alarmlist_}
%define api.value.type {int}
%define parse.error custom

%code requires {
namespace vn {
class AlarmListParser;
}
}

%param {vn::AlarmListParser *parser}

%token END 0 "$end"
%token TSTRING 32001
%token TNUMBER 32002
%token TBOOL 32003
%token TNULL 32004
%token '{' '}' ',' ':' '[' ']'

%code {
#include "alarm/AlarmListActions_p.h"
#include "alarm/SyntaxErrorText_p.h"

#define YYINITDEPTH 200
#define YYMAXDEPTH 200

using vn::AlarmListActions;
}

%expect 0

%%

input:
    object                  { AlarmListActions::storeResult(parser); }         /*  2 */
  | array                   { AlarmListActions::storeResult(parser); }         /*  3 */
  ;

object:
    '{' '}'                 { AlarmListActions::makeObject(parser, 0); }       /*  4 */
  | '{' members '}'         { AlarmListActions::makeObject(parser, $2); }      /*  5 */
  ;

members:
    member                  { $$ = 1; }                                        /*  6 */
  | member ',' members      { $$ = $3 + 1; }                                   /*  7 */
  ;

member:
    TSTRING ':' value                                                          /*  8 */
  ;

array:
    '[' ']'                 { AlarmListActions::makeArray(parser, 0); }        /*  9 */
  | '[' elements ']'        { AlarmListActions::makeArray(parser, $2); }       /* 10 */
  ;

elements:
    value                   { $$ = 1; }                                        /* 11 */
  | value ',' elements      { $$ = $3 + 1; }                                   /* 12 */
  ;

value:
    TSTRING                                                                    /* 13 */
  | TNUMBER                                                                    /* 14 */
  | object                                                                     /* 15 */
  | array                                                                      /* 16 */
  | TBOOL                                                                      /* 17 */
  | TNULL                                                                      /* 18 */
  ;

%%

/** The name of a symbol in messages. */
static const char *symbolName(yysymbol_kind_t symbol)
{
    return symbol == YYSYMBOL_YYUNDEF ? "$undefined" : yysymbol_name(symbol);
}

/** Reports the offending token and, if they are few, the tokens that the parser could take. */
static int yyreport_syntax_error(const yypcontext_t *context, vn::AlarmListParser *parser)
{
    using namespace vn::internal;
    yysymbol_kind_t symbols[kMaxExpectedTokens];
    const char *names[kMaxExpectedTokens];
    const int count = yypcontext_expected_tokens(context, symbols, kMaxExpectedTokens);
    for (int i = 0; i < count; ++i)
        names[i] = symbolName(symbols[i]);
    const SyntaxErrorText error(symbolName(yypcontext_token(context)), names, count);
    alarmlist_error(parser, error.text());
    return error.isComplete() ? 0 : YYENOMEM;
}
