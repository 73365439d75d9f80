// The screens' side of the answer history: opening it at start-up, telling the
// teacher what went wrong with it, and the names it follows students and
// subjects by. While the session has no history, the hooks below give null and
// the screens skip the call.
#pragma once

#include "core/Students.h"
#include "core/TestBank.h"

#include <string>
#include <vector>

class HistoryRoster;
class HistorySubjects;
class QWidget;
struct Session;

// Opens (or starts) the history in the data folder, with the bank's subjects and
// the roster in memory matched to it, and backs it up with the data files from
// then on. Never fails: trouble becomes a message for tellHistoryTrouble. Once
// per session: the backups keep hold of the history opened.
void openHistory(Session &session);

// Shows each message the history has for the teacher (it was damaged and started
// anew, or turned itself off), once. Never during a test: the screens call it
// when a test is over or a screen has closed.
void tellHistoryTrouble(Session &session, QWidget *parent);

// The roster's names, and the bank's subjects, in order, as the history matches them.
std::vector<std::string> studentNames(const StudentRecords &records);
std::vector<std::string> subjectNames(const TestBank &bank);

// The parts the Students and Tests screens tell of their changes; null without a history.
HistoryRoster *historyRoster(Session &session);
HistorySubjects *historySubjects(Session &session);
