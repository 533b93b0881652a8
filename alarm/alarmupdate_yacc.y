/* SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
   SPDX-License-Identifier: MIT

   Alarm updates: pairs of a key and a value with ";" between them, or an error report.

       state=1;level=-0.5;since=2010-05-01;at=12:30:00;armed=true;cams=front,back
       #Camera offline:2.0

   Token     Code   Value
   TSTRING   32001  text
   TINTEGER  32002  number, a 32-bit integer
   TFLOAT    32003  number
   TDATE     32004  year, month and day
   TTIME     32005  no value, as it has no day
   TBOOL     32006  boolean
   others: their character, no value

   What comes of it is the tape of the builder, see AlarmTape_p.h; the builder has the location, too.

   Kept on purpose:
   - Both list rules are right-recursive: of several pairs with one key the leftmost counts, and
     lists of strings come out in reverse order.
   - Lists hold strings only, and a single string is no list.
   - An error report ends the parse; what follows is not read.
   - The scanner gives the letter "a" as a string, so rule 17 never applies.
   - There is no error recovery: the first syntax error ends the parse.
   - The stack never grows. Its 200 entries are also the limit of lists: 98 pairs, or 98 strings.

   The values themselves stand on the tape, in the order of the text, when their token has been read.
   What the grammar passes on is how many strings or pairs there are.

   Numbers in the comments are the rules' own. */

%define api.pure full
%define api.prefix {alarmupdate_}
%define api.value.type {int}
%define parse.error custom

%code requires {
#include "alarm/AlarmUpdateReader_p.h"
}

%param {vn::internal::AlarmUpdateBuilder *builder}

%token END 0 "$end"
%token TSTRING 32001
%token TINTEGER 32002
%token TFLOAT 32003
%token TDATE 32004
%token TTIME 32005
%token TBOOL 32006
%token ';' '=' ',' '#' ':' 'a'

%code {
#define YYINITDEPTH 200
#define YYMAXDEPTH 200
}

%expect 0

%%

input:
    members                     { builder->wrapPairs($1); }                                 /*  2 */
  | errormessage                { YYACCEPT; }                                               /*  3 */
  | emptyimage                  { builder->tape().clear(); YYACCEPT; }                      /*  4 */
  ;

members:
    pair                        { $$ = 1; }                                                 /*  5 */
  | pair ';' members            { $$ = $3 + 1; }                                            /*  6 */
  ;

pair:
    TSTRING '=' value                                                                       /*  7 */
  ;

stringlist:
    TSTRING                     { $$ = 1; }                                                 /*  8 */
  | TSTRING ',' stringlist      { $$ = $3 + 1; }                                            /*  9 */
  ;

value:
    TINTEGER                                                                                /* 10 */
  | TFLOAT                                                                                  /* 11 */
  | TDATE                                                                                   /* 12 */
  | TTIME                                                                                   /* 13 */
  | TBOOL                                                                                   /* 14 */
  | stringlist                  { if ($1 > 1) builder->wrapTexts($1); }                     /* 15 */
  ;

errormessage:
    '#' TSTRING ':' TFLOAT      { builder->wrapPairs(1); }                                  /* 16 */
  ;

emptyimage:
    'a' '='                                                                                 /* 17 */
  ;

%%

/** Reports the offending token and, if they are few, the tokens that the parser could take. */
static int yyreport_syntax_error(const yypcontext_t *context, vn::internal::AlarmUpdateBuilder *builder)
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
