/* SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
   SPDX-License-Identifier: MIT

   Alarm updates: pairs of a key and a value with ";" between them, or an error report.

       state=1;level=-0.5;since=2010-05-01;at=12:30:00;armed=true;cams=front,back
       #Camera offline:2.0

   Token     Code   Value
   TSTRING   32001  script string
   TINTEGER  32002  script number of a 32-bit integer
   TFLOAT    32003  script number
   TDATE     32004  script date
   TTIME     32005  script date
   TBOOL     32006  script boolean
   others: their character, no value

   The result goes to the AlarmUpdateParser, which owns the scanner and the location and knows the
   engine of all values.

   Kept on purpose:
   - Both list rules are right-recursive: of several pairs with one key the leftmost counts, and
     lists of strings come out in reverse order.
   - Lists hold strings only, and a single string is no list.
   - An error report ends the parse; what follows is not read.
   - The scanner gives the letter "a" as a string, so rule 17 never applies.
   - There is no error recovery: the first syntax error ends the parse.
   - The stack never grows. Its 200 entries are also the limit of lists: 98 pairs, or 98 strings.

   The values themselves wait in the parser object, in the order of the text, until the list or the
   object that they belong to is complete. What the grammar passes on is how many strings or pairs
   there are.

   Numbers in the comments are the rules' own. */

%define api.pure full
%define api.prefix {alarmupdate_}
%define api.value.type {int}
%define parse.error custom

%code requires {
namespace vn {
class AlarmUpdateParser;
}
}

%param {vn::AlarmUpdateParser *parser}

%token END 0 "$end"
%token TSTRING 32001
%token TINTEGER 32002
%token TFLOAT 32003
%token TDATE 32004
%token TTIME 32005
%token TBOOL 32006
%token ';' '=' ',' '#' ':' 'a'

%code {
#include "alarm/AlarmUpdateActions_p.h"
#include "alarm/SyntaxErrorText_p.h"

#define YYINITDEPTH 200
#define YYMAXDEPTH 200

using vn::AlarmUpdateActions;
}

%expect 0

%%

input:
    members                     { AlarmUpdateActions::makeMembers(parser, $1);
                                  AlarmUpdateActions::storeResult(parser); }                /*  2 */
  | errormessage                { AlarmUpdateActions::storeResult(parser); YYACCEPT; }      /*  3 */
  | emptyimage                  { AlarmUpdateActions::storeNoResult(parser); YYACCEPT; }    /*  4 */
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
  | stringlist                  { AlarmUpdateActions::makeList(parser, $1); }               /* 15 */
  ;

errormessage:
    '#' TSTRING ':' TFLOAT      { AlarmUpdateActions::makeErrorReport(parser); }            /* 16 */
  ;

emptyimage:
    'a' '='                                                                                 /* 17 */
  ;

%%

/** The name of a symbol in messages. */
static const char *symbolName(yysymbol_kind_t symbol)
{
    return symbol == YYSYMBOL_YYUNDEF ? "$undefined" : yysymbol_name(symbol);
}

/** Reports the offending token and, if they are few, the tokens that the parser could take. */
static int yyreport_syntax_error(const yypcontext_t *context, vn::AlarmUpdateParser *parser)
{
    using namespace vn::internal;
    yysymbol_kind_t symbols[kMaxExpectedTokens];
    const char *names[kMaxExpectedTokens];
    const int count = yypcontext_expected_tokens(context, symbols, kMaxExpectedTokens);
    for (int i = 0; i < count; ++i)
        names[i] = symbolName(symbols[i]);
    const SyntaxErrorText error(symbolName(yypcontext_token(context)), names, count);
    alarmupdate_error(parser, error.text());
    return error.isComplete() ? 0 : YYENOMEM;
}
