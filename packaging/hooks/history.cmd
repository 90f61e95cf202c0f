@echo off
rem ZebekHook: a line for each match in "history.txt": when, where, how many, who. Copy it into the
rem game's directory as "ZebekHook.cmd".
if not "%~1"=="match-archived" exit /b
>>history.txt echo %~2 %~3 %~4 %~5
