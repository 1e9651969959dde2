@echo off
rem Starts CATIA on the runtime view of this workspace, in a shell in which build.bat has run.
cd /d "%~dp0"
call mkrun -c cnext
