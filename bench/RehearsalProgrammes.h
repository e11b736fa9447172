// Programmes that are rehearsed and run live, to be compared: what an index table can do, each long
// enough for an instrument on the line to see it. The rows are those of a file of the index table.
#pragma once

namespace velmoor::bench {

struct RehearsedCase {
  const char* name;
  const char* inertiaRatio;  // %, of the load, as Pn103 and the machine have it
  const char* rows;
};

inline constexpr const char* kRehearsedHead =
    "label,position,speed,rdst,rspd,pout,event,loop,next\n";

inline constexpr RehearsedCase kRehearsedCases[] = {
    {"one absolute move", "0", "a,A+200,100,-,1,:::::,IT0,1,END\n"},
    {"one move with a heavy load", "300", "a,A+200,100,-,1,:::::,IT0,1,END\n"},
    {"there and back", "0",
     "a,A+90,120,-,1,:::::,IT100,1,b\n"
     "b,A+0,90,-,1,:::::,IT100,1,END\n"},
    {"relative moves", "100",
     "a,I+60,80,-,1,:::::,IT50,1,b\n"
     "b,I-85,100,-,1,:::::,IT50,1,c\n"
     "c,I+25,40,-,1,:::::,IT0,1,END\n"},
    {"dwells alone", "0",
     "a,-,1,-,1,:::::,T700,1,b\n"
     "b,-,1,-,1,:::::,T1100,1,END\n"},
    {"dwells around a move", "0",
     "a,-,1,-,1,:::::,T600,1,b\n"
     "b,A+80,90,-,1,:::::,T1500,1,c\n"
     "c,-,1,-,1,:::::,T400,1,END\n"},
    {"twenty repetitions", "0", "a,I+12.5,80,-,1,:::::,IT20,20,END\n"},
    {"repetitions, and back", "200",
     "a,I+40,120,-,1,:::::,IT100,4,b\n"
     "b,A+0,200,-,1,:::::,IT0,1,END\n"},
    {"outputs", "0",
     "a,A+50,100,-,1,ANNNN,IT300,1,b\n"
     "b,-,1,-,1,:ANNN,T400,1,c\n"
     "c,A+0,100,-,1,NNNNA,IT300,1,d\n"
     "d,-,1,-,1,NNNNN,T300,1,END\n"},
    {"on at the end of the command", "0",
     "a,A+100,100,-,1,:::::,DT200,1,b\n"
     "b,A+20,80,-,1,:::::,DT0,1,END\n"},
    {"on when near", "0",
     "a,A+100,100,-,1,:::::,NT0,1,b\n"
     "b,A+160,40,-,1,:::::,IT0,1,END\n"},
    {"without an end, then stopped", "0",
     "a,+INFINITE,60,-,1,:::::,T1500,1,b\n"
     "b,STOP,1,-,1,:::::,IT200,1,END\n"},
    {"another target on the way", "0",
     "a,A+200,100,-,1,:::::,T900,1,b\n"
     "b,A+20,80,-,1,:::::,IT0,1,END\n"},
    {"slow and precise", "0", "a,A+6,3,-,1,:::::,IT0,1,END\n"}};

}  // namespace velmoor::bench
