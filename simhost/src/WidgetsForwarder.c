/* XPWidgets_64.dll of simhost on Windows: nothing of its own. Its module-definition
   file forwards every widget function to XPLM_64.dll, where simhost implements it. */
