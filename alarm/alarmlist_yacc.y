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

   What comes of it is the tape of the builder, see AlarmTape_p.h; the builder has the location, too.

   Kept on purpose:
   - Both list rules are right-recursive and append: arrays come out in reverse order, and of the
     values of a repeated key the first in the text comes first.
   - There is no error recovery: the first syntax error ends the parse.
   - The stack never grows. A right-recursive list holds two symbols an element, so its 200 entries
     are also the limit of flat lists: 99 values, 98 members; arrays nest 197 deep.

   The values themselves stand on the tape, in the order of the text, when their token has been read.
   What the grammar passes on is how many members or elements there are.

   Numbers in the comments are the rules' own. */

%define api.pure full
%define api.prefix {alarmlist_}
%define api.value.type {int}
%define parse.error custom

%code requires {
#include "alarm/AlarmListReader_p.h"
}

%param {vn::internal::AlarmListBuilder *builder}

%token END 0 "$end"
%token TSTRING 32001
%token TNUMBER 32002
%token TBOOL 32003
%token TNULL 32004
%token '{' '}' ',' ':' '[' ']'

%code {
#define YYINITDEPTH 200
#define YYMAXDEPTH 200
}

%expect 0

%%

input:
    object                                                                     /*  2 */
  | array                                                                      /*  3 */
  ;

object:
    '{' '}'                 { builder->object(0); }                            /*  4 */
  | '{' members '}'         { builder->object($2); }                           /*  5 */
  ;

members:
    member                  { $$ = 1; }                                        /*  6 */
  | member ',' members      { $$ = $3 + 1; }                                   /*  7 */
  ;

member:
    TSTRING ':' value                                                          /*  8 */
  ;

array:
    '[' ']'                 { builder->array(0); }                             /*  9 */
  | '[' elements ']'        { builder->array($2); }                            /* 10 */
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

/** Reports the offending token and, if they are few, the tokens that the parser could take. */
static int yyreport_syntax_error(const yypcontext_t *context, vn::internal::AlarmListBuilder *builder)
{
    yysymbol_kind_t expected[vn::internal::kMaxExpectedTokens];
    const int count =
        yypcontext_expected_tokens(context, expected, vn::internal::kMaxExpectedTokens);
    const auto name = [](yysymbol_kind_t symbol) {
        return symbol == YYSYMBOL_YYUNDEF ? "$undefined" : yysymbol_name(symbol);
    };
    return builder->reportSyntaxError(yypcontext_token(context), expected, count, name) ? 0
                                                                                        : YYENOMEM;
}
