/**
 * @file
 * @brief Who holds a login session on this machine, sorted into local and network users.
 *
 * A network (directory) user is reported as domain\\user, a local user as user; both in lower case
 * and as wide text. The sessions come from the system's login records (utmpx). A user is a network
 * user when the primary group's name tells so (FindDomainName()) or when the directory service's
 * client finds a domain (FindDomainNameViaDscl()); whoever cannot be found in a directory counts as
 * local.
 *
 * Nothing here reports an error and nothing throws: look-ups that fail make a user local, a missing
 * record file gives no users, and when memory runs out the names found so far stay.
 *
 * Output: a collection writes diagnostic lines to standard output (myfd()), one for each login
 * record and one for each user found. A program whose own output must stay clean redirects standard
 * output around the call.
 *
 * Thread safety: reading the login records moves a cursor that belongs to the whole process. The
 * library reads them under a mutex of its own, so two collections may run at once; a program that
 * walks the records itself (getutxent) must not do so meanwhile. The look-ups use the re-entrant
 * calls.
 *
 * Cost: where the directory client is installed, a user outside the "domain users" groups takes up to two
 * runs of it for each of their login records, which wait for the directory without a limit.
 */
#ifndef VLRCOMN_LOGGED_ON_USERS_H
#define VLRCOMN_LOGGED_ON_USERS_H

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "vlrcomn/types.h"

namespace velora_com::qel::session {

/** @addtogroup sessions
 * @{ */

/**
 * Adds the users who are logged on to two sets.
 *
 * All records are read, wherever the process's record cursor stands; afterwards it is at the start.
 *
 * @param networkUsers receives domain\\user of every network user; not cleared first
 * @param localUsers receives every local user; not cleared first
 * @param networkUsersOnly when true, local users are neither added nor written to the diagnostics
 */
VLRCOMN_API void CollectLoggedonUsers(std::set<std::wstring>& networkUsers,
                                      std::set<std::wstring>& localUsers, bool networkUsersOnly);

/**
 * Gives the users who are logged on as two texts: the names in ascending order, separated by ",".
 *
 * A text is assigned only when there is a user for it: without one it stays as it was passed, so
 * pass empty texts.
 *
 * @param networkUsers receives the network users
 * @param localUsers receives the local users; never touched when networkUsersOnly is true
 * @param networkUsersOnly leave the local users out
 */
VLRCOMN_API void CollectComaSepLoggedonUsers(std::wstring& networkUsers, std::wstring& localUsers,
                                             bool networkUsersOnly);

/**
 * Gives all users who are logged on in one text: network users, then local users, separated by ",".
 *
 * The text has at most 128 characters. A longer one (and one of exactly 128) is cut before a name
 * and ends with ",..."; when not even the first name fits, the text is just ",...".
 *
 * @param allUsers receives the text; empty when nobody is logged on
 */
VLRCOMN_API void CollectAllLoggedonUsers(std::wstring& allUsers);

/**
 * Tells from the primary group whether a user belongs to a directory domain.
 *
 * That is so when the group's name, in lower case, contains "domain users" and holds a backslash,
 * as in CORP\\Domain Users. A "found group struct" line then goes to myfd().
 *
 * @param user the user's login name
 * @param domain receives the part before the first backslash, in lower case; untouched on false
 * @return true for a directory user; false for anyone else, and when the user or the group cannot
 * be looked up (records of more than 16384 bytes included)
 */
VLRCOMN_API bool FindDomainName(const std::string& user, std::string& domain);

/**
 * Asks the directory service's command-line client for a user's domain.
 *
 * Where this process may not execute the client, /usr/bin/dscl, no command runs and the answer is 0. The
 * command, at most 255 characters of it, is run by the shell and 1024 bytes of its output are looked at.
 * The call waits for its end, however long the directory takes. A user or an attribute that holds a
 * character which means something to the shell (white space, control characters, quotes, backslash, or one
 * of <tt>; & | < > ( ) $ ` * ? [ ] # ~ = % ! { }</tt>) runs no command and has no domain.
 *
 * @param user the user's login name
 * @param attribute "userPrincipalName": the domain is what follows the first "@" of the output.
 *        "OriginalAuthenticationAuthority": what lies between the first "@" and the next ";". With
 * any other attribute there is no domain.
 * @param domain receives the domain in lower case, without punctuation and line ends around it. It
 * is left alone when the command gives no output, and emptied when the output holds no domain.
 * @return 1 when a domain was found, else 0
 */
VLRCOMN_API int FindDomainNameViaDscl(const std::string& user, const std::string& attribute,
                                      std::string& domain);

/**
 * Splits domain\\user at its first backslash.
 *
 * @param fullName the text to split
 * @param domain receives what precedes the backslash; empty when there is none
 * @param user receives what follows the backslash; all of @p fullName when there is none
 */
VLRCOMN_API void parseFullUserName(const std::wstring& fullName, std::wstring& domain,
                                   std::wstring& user);

/**
 * Splits a text at every separator and appends the pieces, empty ones included.
 *
 * A text without separator appends nothing: this is on purpose, callers ask for "more than one
 * piece".
 *
 * @param text the text to split
 * @param separator the character between two pieces
 * @param pieces receives the pieces after those that it holds already
 */
VLRCOMN_API void split(const std::string& text, char separator, std::vector<std::string>& pieces);

/**
 * Drops everything before the first and after the last letter or digit (ASCII).
 *
 * @param text a text with terminator, or null
 * @return the rest; empty when the text holds no letter and no digit, or is null
 */
VLRCOMN_API std::string trimmer(const char* text);

/**
 * Turns ASCII letters to lower case, byte by byte; other bytes stay.
 *
 * @param text the text, changed in place
 */
VLRCOMN_API void toLower(std::string& text);

/**
 * The stream that the diagnostic lines go to.
 *
 * @return standard output
 */
VLRCOMN_API std::FILE* myfd();

/** @} */

}  // namespace velora_com::qel::session

#endif
